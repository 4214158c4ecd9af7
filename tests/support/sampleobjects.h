#pragma once

#include "objects.h"

/// Objects of the organisation and of the shift guide.
namespace support {

[[nodiscard]] orvex::ObjectInfo root(quint32 id, const QString &name);
[[nodiscard]] orvex::ObjectInfo firm(quint32 id, const QString &name, quint32 parent);
[[nodiscard]] orvex::ObjectInfo department(quint32 id, const QString &name, quint32 parent);
/// A person; with a unit also an object of the organisation.
[[nodiscard]] orvex::ObjectInfo employee(quint32 id, const QString &name, const QString &number, quint32 unit = 0);
/// The same object, marked as deleted.
[[nodiscard]] orvex::ObjectInfo deleted(orvex::ObjectInfo object);

/// A shift of the guide; \a intervals is a list of identifiers with commas between them.
[[nodiscard]] orvex::ObjectInfo guideShift(quint32 id, const QString &code, const QString &name,
                                           const QString &intervals = {});
/// An interval of the guide, in seconds from midnight.
[[nodiscard]] orvex::ObjectInfo guideInterval(quint32 id, int start, int finish);

} // namespace support
