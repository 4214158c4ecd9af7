#pragma once

#include "report.h"

namespace bench {

/// The time of a search in the tree of 10,000 employees, against a scan of their names.
void benchTree(Report &report);

} // namespace bench
