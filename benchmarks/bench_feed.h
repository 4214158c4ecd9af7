#pragma once

#include "report.h"

namespace bench {

/// The delay from the start of another process's transaction to the changed row in the client's list.
void benchFeed(Report &report);

/// Runs as the other process: writes to the store in \a file and prints each change with its time.
int runFeedWriter(const QString &file);

} // namespace bench
