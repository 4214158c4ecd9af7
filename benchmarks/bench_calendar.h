#pragma once

#include "report.h"

namespace bench {

/// The year calendar: a repaint of the grid, and a pattern repeated to the end of the year.
void benchCalendar(Report &report);

} // namespace bench
