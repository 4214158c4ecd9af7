#pragma once

#include "objects.h"
#include "schedules.h"

#include <QDate>

namespace scheduleview {

/// Whether the local storage holds a personal schedule of the employee that starts on exactly \a start, in whatever
/// state.
[[nodiscard]] bool hasPersonalSchedule(quint32 workerId, const QDate &start);

/// A new personal schedule of \a worker, named after the employee and the month, for the month that \a start begins.
[[nodiscard]] orvex::SCHEDULE_DATA personalSchedule(const orvex::ObjectInfo &worker, const QDate &start,
                                                    const QString &color);

} // namespace scheduleview
