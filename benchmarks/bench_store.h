#pragma once

#include "report.h"

namespace bench {

/// What a request costs on its way through the client against the bare SQL in the engine's own shell.
void benchRequests(Report &report);

/// How long a store of 121,000 schedules takes to be there, and what the GUI thread feels of it.
void benchLoading(Report &report);

} // namespace bench
