#pragma once

#include "report.h"

namespace bench {

/// How long a change by another process takes, from before its transaction to the client's list.
void benchFeed(Report &report);

/// The other process: writes to the store in \a file and prints each change with its moment.
int runFeedWriter(const QString &file);

} // namespace bench
