#pragma once

#include "report.h"

namespace bench {

/// How long a search takes in the tree of 10,000 employees, against looking through their names.
void benchTree(Report &report);

} // namespace bench
