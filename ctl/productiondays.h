#pragma once

#include "bulkwriter.h"

/// The public holidays of Russia in \a year by their fixed dates (Labour Code of the Russian Federation, art. 112), and
/// the working days right before one, which are an hour shorter (art. 95). Days moved by the government are not known.
[[nodiscard]] QList<store::ProductionDay> productionDays(int year);
