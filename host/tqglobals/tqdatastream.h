#pragma once

#include <QByteArray>
#include <QDataStream>
#include <QHash>
#include <QIODevice>
#include <QList>
#include <QStringList>
#include <QVector>

/// The stream of every payload that crosses the wire or the disk: `QDataStream` with one fixed version.
///
/// Reading is bounded. A count is read by hand and compared with the bytes that are left before any element is read,
/// and nothing is reserved by it: a corrupt count costs no memory and throws nothing. Qt's own list operators reserve
/// first and end in `bad_alloc`.
class TQDataStream : public QDataStream
{
public:
    /// Reads \a payload.
    explicit TQDataStream(const QByteArray &payload)
        : QDataStream(payload)
    {
        setVersion(QDataStream::Qt_5_15);
    }
    /// Reads or writes \a payload, which stays the caller's.
    TQDataStream(QByteArray *payload, QIODevice::OpenMode mode)
        : QDataStream(payload, mode)
    {
        setVersion(QDataStream::Qt_5_15);
    }
};

namespace tqstream {

/// Reads a count; false, with the stream marked corrupt, when fewer bytes are left than \a count elements need
/// (every element takes at least one byte).
inline bool readCount(QDataStream &stream, quint32 &count)
{
    count = 0;
    stream >> count;
    if (stream.status() != QDataStream::Ok)
        return false;
    const qint64 left = stream.device() ? stream.device()->bytesAvailable() : 0;
    if (qint64(count) <= left)
        return true;
    stream.setStatus(QDataStream::ReadCorruptData);
    return false;
}

/// Reads a list as `QDataStream` writes it, bounded; an empty list when the stream is not intact afterwards.
template <class Stream, class T> void readList(Stream &stream, QList<T> &list)
{
    list.clear();
    quint32 count = 0;
    if (!readCount(stream, count))
        return;
    for (quint32 i = 0; i < count && stream.status() == QDataStream::Ok; ++i) {
        T element{};
        stream >> element;
        list.append(std::move(element));
    }
    if (stream.status() != QDataStream::Ok)
        list.clear();
}

/// Reads a hash as `QDataStream` writes it, bounded; an empty hash when the stream is not intact afterwards.
template <class Stream, class Key, class T> void readHash(Stream &stream, QHash<Key, T> &hash)
{
    hash.clear();
    quint32 count = 0;
    if (!readCount(stream, count))
        return;
    for (quint32 i = 0; i < count && stream.status() == QDataStream::Ok; ++i) {
        Key key{};
        T value{};
        stream >> key >> value;
        hash.insert(std::move(key), std::move(value));
    }
    if (stream.status() != QDataStream::Ok)
        hash.clear();
}

} // namespace tqstream

// These win over Qt's operators for a TQDataStream and keep it one along a chain of `>>`.
template <class T> TQDataStream &operator>>(TQDataStream &stream, T &value)
{
    static_cast<QDataStream &>(stream) >> value;
    return stream;
}

template <class T> TQDataStream &operator>>(TQDataStream &stream, QList<T> &list)
{
    tqstream::readList(stream, list);
    return stream;
}

template <class Key, class T> TQDataStream &operator>>(TQDataStream &stream, QHash<Key, T> &hash)
{
    tqstream::readHash(stream, hash);
    return stream;
}

inline TQDataStream &operator>>(TQDataStream &stream, QStringList &list)
{
    tqstream::readList(stream, static_cast<QList<QString> &>(list));
    return stream;
}

/// Nothing on the wire is a vector; Qt's own operator would be picked, and it reserves what a corrupt count says.
template <class T> TQDataStream &operator>>(TQDataStream &stream, QVector<T> &vector) = delete;

/// Reads \a payload into \a values, all or nothing: false, with every value default-constructed, unless the payload is
/// intact and ends exactly behind the last value.
template <class... T> [[nodiscard]] bool readPayload(const QByteArray &payload, T &...values)
{
    TQDataStream stream(payload);
    stream.startTransaction();
    (stream >> ... >> values);
    if (stream.commitTransaction() && stream.atEnd())
        return true;
    ((values = T{}), ...);
    return false;
}

/// The payload that `readPayload` reads back.
template <class... T> [[nodiscard]] QByteArray writePayload(const T &...values)
{
    QByteArray payload;
    TQDataStream stream(&payload, QIODevice::WriteOnly);
    (static_cast<QDataStream &>(stream) << ... << values);
    return payload;
}
