#pragma once

#include <QString>

class ScheduleModel;

namespace scheduleview {

/// The name proposed for a new schedule: the usual one with the number after the highest in the list.
[[nodiscard]] QString newScheduleName(const ScheduleModel &model);

} // namespace scheduleview
