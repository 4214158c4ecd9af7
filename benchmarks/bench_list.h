#pragma once

#include "report.h"

namespace bench {

/// The schedule list of 10,000 employees: start, change notifications, filtering and memory, against Qt's own models
/// and against the necessary operations alone.
void benchList(Report &report);

} // namespace bench
