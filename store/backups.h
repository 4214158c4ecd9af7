#pragma once

#include "outcome.h"
#include "storeaddress.h"

#include <QDateTime>

/// The copies of a store that are kept in the folder "backups" beside it: one a day, and one before each upgrade.
namespace store::backups {

/// How many daily copies are kept.
constexpr int Kept = 10;

[[nodiscard]] QString folder(const StoreAddress &address);

/// The daily copy of the local date at \a now.
[[nodiscard]] QString dailyName(const StoreAddress &address, const QDateTime &now);
/// The copy of a store of the schema \a schema that is upgraded at \a now.
[[nodiscard]] QString nameBeforeUpgrade(const StoreAddress &address, int schema, const QDateTime &now);

/// Makes the daily copy unless it is there, then removes the oldest ones beyond `Kept`. Blocks as long as copying
/// takes; on a connection of its own, so that whoever uses the store meanwhile is not held up. A store that cannot be
/// copied costs none of its older copies.
[[nodiscard]] Outcome makeDaily(const StoreAddress &address, const QDateTime &now);

} // namespace store::backups
