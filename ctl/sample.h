#pragma once

#include "outcome.h"

#include <QDate>

namespace store {
class Database;
}

struct SampleSize
{
    static constexpr int MaxPhotos = 300; ///< only the first employees have a photo

    int employees = 60; ///< current employees; the sample adds two former ones
    int months = 3; ///< of personal schedules; the last is next month, or this month if there is only one
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

/// Fills an empty store with a sample organisation for the months around \a today, in one transaction. The same date
/// and size always produce the same organisation.
[[nodiscard]] store::Outcome writeSample(store::Database &database, const SampleSize &size, const QDate &today,
                                         SampleCounts &counts);
