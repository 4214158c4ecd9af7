#pragma once

#include <QByteArray>
#include <QDataStream>
#include <QHash>
#include <QMetaType>
#include <QString>

namespace orvex {

/// A hash of the host's data layer. A separate type, so that its implementation can change without its users.
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
/// A default-constructed one is a null object: identifier 0, empty name, no parameters.
struct ObjectInfo
{
    QString type; ///< object type, such as "OT_WORKER"
    quint32 id = 0;
    QHash<QString, QString> parameters; ///< by parameter type name, such as "PT_NAME"

    /// Whether this is a null object.
    [[nodiscard]] bool isNull() const { return id == 0 && type.isEmpty(); }
    /// The parameter as text; empty if there is none.
    [[nodiscard]] QString parameter(const QString &name) const { return parameters.value(name); }

    /// Equal in type, identifier and every parameter.
    bool operator==(const ObjectInfo &other) const
    {
        return id == other.id && type == other.type && parameters == other.parameters;
    }
};

/// The objects of one data name by identifier.
using ObjectHash = TQHash<unsigned int, ObjectInfo>;

/// A request for one blob of an object. A blob whose MD5 is `md5` is not sent.
struct _BLOB_DATA_RESQUEST
{
    quint32 id = 0; ///< the object's identifier
    QString name; ///< the parameter, such as "PT_PHOTO"
    QByteArray md5; ///< raw MD5 of the local copy; empty: none
};

// All members in the order of their declaration.
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
