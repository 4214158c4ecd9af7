#pragma once

#include <QString>

class ScheduleModel;

namespace scheduleview {

/// The name proposed for a new schedule: the default name with the number after the highest one in the list.
[[nodiscard]] QString newScheduleName(const ScheduleModel &model);

} // namespace scheduleview
