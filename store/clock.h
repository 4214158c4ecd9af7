#pragma once

#include <QDateTime>

#include <functional>

namespace store {

/// Where the store takes the time of day from, in UTC: the system, or a test's own. Called on the thread of whoever
/// was given it.
using Clock = std::function<QDateTime()>;

/// The system's clock.
[[nodiscard]] inline Clock systemClock()
{
    return [] { return QDateTime::currentDateTimeUtc(); };
}

} // namespace store
