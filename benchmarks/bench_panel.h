#pragma once

#include "report.h"

namespace bench {

/// The time in which the information panel shows a schedule, against one layout of the same text.
void benchPanel(Report &report);

} // namespace bench
