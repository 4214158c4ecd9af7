#pragma once

#include "backupnames.h"
#include "outcome.h"

#include <functional>

class QObject;

namespace store::backups {

/// How many daily copies are kept.
constexpr int Kept = 10;

/// Makes the daily copy unless it is there, then removes the oldest ones beyond `Kept`. Blocks as long as copying
/// takes; on a connection of its own, so that whoever uses the store meanwhile is not held up. A store that cannot be
/// copied costs none of its older copies.
[[nodiscard]] Outcome makeDaily(const StoreAddress &address, const QDateTime &now);
/// Makes it on a thread of its own, which goes on when \a context is gone; the program's end waits for it. \a ended is
/// called on the thread of \a context, and not called any more when that is gone.
void startDaily(const StoreAddress &address, const QDateTime &now, QObject *context,
                const std::function<void(const Outcome &)> &ended);

} // namespace store::backups
