#pragma once

#include "report.h"

namespace bench {

/// How long the information panel takes to tell about a schedule, against laying its finished text out once.
void benchPanel(Report &report);

} // namespace bench
