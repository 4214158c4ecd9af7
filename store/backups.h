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
/// Makes the daily copy on a separate thread and then calls \a ended on the thread of \a context. If \a context is
/// destroyed, copying continues without that call. The program waits for the copy before it exits.
void startDaily(const StoreAddress &address, const QDateTime &now, QObject *context,
                const std::function<void(const Outcome &)> &ended);

} // namespace store::backups
