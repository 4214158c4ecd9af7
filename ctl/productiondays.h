#pragma once

#include "bulkwriter.h"

/// What sets days of \a year apart from the ordinary week of Russia, in the order of their dates:
/// - public holidays (Labour Code of the Russian Federation, art. 112);
/// - days off that weekends have moved to: by the law itself from a weekend on a holiday to the next working day, or by
///   the government's decree for the year, as far as it is known here;
/// - weekends that are worked because a decree has moved them;
/// - working days right before a holiday, which are an hour shorter (art. 95).
[[nodiscard]] QList<store::ProductionDay> productionDays(int year);
