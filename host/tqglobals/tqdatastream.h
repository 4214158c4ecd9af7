#pragma once

#include <QByteArray>
#include <QDataStream>
#include <QHash>
#include <QIODevice>
#include <QList>
#include <QStringList>
#include <QVector>

#include <utility>

/// The stream of every payload on the wire and on the disk: `QDataStream` with one fixed version.
///
/// Reading is bounded. A count is compared with the bytes that are left before any element is read, and no memory is
/// reserved for it, so a corrupt count costs no memory and throws nothing. Qt's own list operators reserve first and
/// throw `bad_alloc`.
class TQDataStream : public QDataStream
{
public:
    /// Reads \a payload.
    explicit TQDataStream(const QByteArray &payload)
        : QDataStream(payload)
    {
        setVersion(QDataStream::Qt_5_15);
    }
    /// Reads or writes \a payload; the caller keeps ownership.
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

/// Reads a list as `QDataStream` writes it, bounded; the list is empty if the stream is not Ok afterwards.
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

/// Reads a hash as `QDataStream` writes it, bounded; the hash is empty if the stream is not Ok afterwards.
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

// Preferred to Qt's operators for a TQDataStream; they return a TQDataStream, so that a chain of `>>` stays bounded.
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

/// No payload contains a vector. Qt's own operator would reserve memory by a corrupt count.
template <class T> TQDataStream &operator>>(TQDataStream &stream, QVector<T> &vector) = delete;

/// Reads \a payload into \a values, all or nothing: false, with every value default-constructed, unless the payload is
/// intact and ends exactly after the last value.
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

/// Returns the payload that `readPayload` reads.
template <class... T> [[nodiscard]] QByteArray writePayload(const T &...values)
{
    QByteArray payload;
    TQDataStream stream(&payload, QIODevice::WriteOnly);
    (static_cast<QDataStream &>(stream) << ... << values);
    return payload;
}
