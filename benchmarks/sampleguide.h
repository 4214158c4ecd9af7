#pragma once

#include "calendardays.h"

namespace bench {

/// Puts a guide of ten shifts into the local storage.
void fillGuide();

/// Five days a week with one of these shifts.
[[nodiscard]] QList<orvex::SCHEDULE_CALENDAR_DAY> workingDays(int firstYear, int lastYear);

} // namespace bench
