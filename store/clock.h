#pragma once

#include <QDateTime>

#include <functional>

namespace store {

/// The source of the current time, in UTC. Called on the thread of the object that holds it.
using Clock = std::function<QDateTime()>;

/// The system's clock.
[[nodiscard]] inline Clock systemClock()
{
    return [] { return QDateTime::currentDateTimeUtc(); };
}

} // namespace store
