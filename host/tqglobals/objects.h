#pragma once

#include <QByteArray>
#include <QDataStream>
#include <QHash>
#include <QMetaType>
#include <QString>

namespace orvex {

/// A hash of the host's data layer. A type of its own, so that what it holds can change without its users.
template <class Key, class T> class TQHash : public QHash<Key, T>
{
public:
    using QHash<Key, T>::QHash;
    TQHash() = default;
    TQHash(const QHash<Key, T> &other)
        : QHash<Key, T>(other)
    {
    }
};

/// A cached object of any kind: an employee, a unit, a shift of the guide, an interval.
/// A default-constructed one stands for "there is none": identifier 0, empty name, no parameters.
struct ObjectInfo
{
    QString type; ///< object type, such as "OT_WORKER"
    quint32 id = 0;
    QHash<QString, QString> parameters; ///< by parameter type name, such as "PT_NAME"

    /// Whether this stands for "there is none".
    [[nodiscard]] bool isNull() const { return id == 0 && type.isEmpty(); }
    /// The parameter as text; empty without it.
    [[nodiscard]] QString parameter(const QString &name) const { return parameters.value(name); }

    /// Equal in type, identifier and every parameter.
    bool operator==(const ObjectInfo &other) const
    {
        return id == other.id && type == other.type && parameters == other.parameters;
    }
};

/// The objects of one data name by identifier.
using ObjectHash = TQHash<unsigned int, ObjectInfo>;

/// Asks for one blob of an object, unless the asker's copy is the current one.
struct _BLOB_DATA_RESQUEST
{
    quint32 id = 0; ///< the object's identifier
    QString name; ///< the parameter, such as "PT_PHOTO"
    QByteArray md5; ///< raw MD5 of the copy at hand; empty: none
};

// All three members in their order.
inline QDataStream &operator<<(QDataStream &stream, const _BLOB_DATA_RESQUEST &request)
{
    return stream << request.id << request.name << request.md5;
}

inline QDataStream &operator>>(QDataStream &stream, _BLOB_DATA_RESQUEST &request)
{
    return stream >> request.id >> request.name >> request.md5;
}

} // namespace orvex

Q_DECLARE_METATYPE(orvex::ObjectInfo)
