#pragma once

#include "outcome.h"

#include <QDate>

namespace store {
class Database;
}

struct SampleSize
{
    static constexpr int MaxPhotos = 300; ///< the first employees have one

    int employees = 60; ///< those that work there; two more have left
    int months = 3; ///< of personal schedules, up to the month after this one
};

struct SampleCounts
{
    int units = 0;
    int employees = 0;
    int shifts = 0;
    int commonSchedules = 0;
    int personalSchedules = 0;
    int photos = 0;
};

/// Fills an empty store with a believable organisation around \a today, all or nothing. The same date and size give the
/// same organisation.
[[nodiscard]] store::Outcome writeSample(store::Database &database, const SampleSize &size, const QDate &today,
                                         SampleCounts &counts);
