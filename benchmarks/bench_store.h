#pragma once

#include "report.h"

namespace bench {

/// The time of a request through the client, against its SQL in the engine's own shell.
void benchRequests(Report &report);

/// The time to load a store of 121,000 schedules, and how long that blocks the GUI thread.
void benchLoading(Report &report);

} // namespace bench
