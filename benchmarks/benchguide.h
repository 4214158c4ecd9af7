#pragma once

#include "calendardays.h"

namespace bench {

/// Adds ten guide shifts to the local storage.
void fillGuide();

/// Monday to Friday of each week, with one of these shifts.
[[nodiscard]] QList<orvex::SCHEDULE_CALENDAR_DAY> workingDays(int firstYear, int lastYear);

} // namespace bench
