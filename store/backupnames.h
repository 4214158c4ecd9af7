#pragma once

#include "storeaddress.h"

#include <QDateTime>

/// Where the copies of a store are kept: in the folder "backups" beside it, one a day, and one before each upgrade.
namespace store::backups {

/// The absolute path of the folder; it need not be there.
[[nodiscard]] QString folder(const StoreAddress &address);

/// The daily copy of the local date at \a now.
[[nodiscard]] QString dailyName(const StoreAddress &address, const QDateTime &now);
/// The copy of a store of the schema \a schema that is upgraded at \a now.
[[nodiscard]] QString nameBeforeUpgrade(const StoreAddress &address, int schema, const QDateTime &now);
/// The date of a daily copy's file name; null for any other file.
[[nodiscard]] QDate dateOfDaily(const StoreAddress &address, const QString &name);

} // namespace store::backups
