#pragma once

#include "storagechange.h"

/// What the store would send to the client's cache.
namespace support {

using Objects = QList<orvex::ObjectInfo>;

/// A change that replaces everything.
[[nodiscard]] orvex::StorageChange fullChange(const QList<orvex::SCHEDULE_DATA> &schedules, const QString &dataName,
                                              const Objects &objects);

void clearCache();
/// Replaces everything by the objects of one guide or tree.
void replaceObjects(const QString &dataName, const Objects &objects);
/// Replaces everything by a shift guide.
void replaceGuide(const Objects &shifts, const Objects &intervals);

void storeSchedules(const QList<orvex::SCHEDULE_DATA> &schedules, const QList<quint32> &removed = {});
void storeObjects(const QString &dataName, const Objects &objects, const QList<quint32> &removed = {});
/// Stores employees as persons only, not in the tree of the organisation.
void storeEmployees(const Objects &employees, const QList<quint32> &removed = {});

} // namespace support
