#pragma once

#include "storeaddress.h"

#include <QDateTime>

/// Copies of a store are in the folder "backups" beside it: one for each day and one for each upgrade.
namespace store::backups {

/// The absolute path of the folder, which may not exist.
[[nodiscard]] QString folder(const StoreAddress &address);

/// The file of the daily copy for the local date at \a now.
[[nodiscard]] QString dailyName(const StoreAddress &address, const QDateTime &now);
/// The file of the copy of a store of the schema \a schema that is upgraded at \a now.
[[nodiscard]] QString nameBeforeUpgrade(const StoreAddress &address, int schema, const QDateTime &now);
/// The date in the file name of a daily copy; null for any other file.
[[nodiscard]] QDate dateOfDaily(const StoreAddress &address, const QString &name);

} // namespace store::backups
