#pragma once

#include "bulkwriter.h"

/// The days of \a year that differ from the ordinary working week in Russia, ordered by date:
/// - public holidays (Labour Code of the Russian Federation, art. 112);
/// - days off moved from a weekend: to the next working day if a holiday is on the weekend (art. 112, part 2), or by
///   the government's decree for the year, if the table of decrees has it;
/// - weekends that a decree turns into working days;
/// - working days before a holiday, one hour shorter (art. 95).
[[nodiscard]] QList<store::ProductionDay> productionDays(int year);
