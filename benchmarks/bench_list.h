#pragma once

#include "report.h"

namespace bench {

/// The schedule list of 10,000 employees: start, change notices, filtering and memory, against Qt's own models and
/// against the bare work.
void benchList(Report &report);

} // namespace bench
