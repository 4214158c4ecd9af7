#pragma once

#include "backupnames.h"
#include "outcome.h"

#include <functional>

class QObject;

namespace store::backups {

/// How many daily copies are kept.
constexpr int Kept = 10;

/// Makes the daily copy unless it exists, then removes the oldest ones beyond `Kept`. Blocks until the copy is
/// complete, without blocking other users of the store. If copying fails, no older copy is removed.
[[nodiscard]] Outcome makeDaily(const StoreAddress &address, const QDateTime &now);
/// Makes the daily copy on a thread of its own and calls \a ended on the thread of \a context. The copying continues if
/// \a context is destroyed, without the call; the program waits for it before it exits.
void startDaily(const StoreAddress &address, const QDateTime &now, QObject *context,
                const std::function<void(const Outcome &)> &ended);

} // namespace store::backups
