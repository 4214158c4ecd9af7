#pragma once

#include <QString>

namespace scheduleview {

/// The displayed name of a schedule type (`orvex::ScheduleMode`); a fixed text for any other number.
[[nodiscard]] QString scheduleTypeName(int type);

} // namespace scheduleview
