#pragma once

#include "objects.h"
#include "schedules.h"

#include <QDate>
#include <QString>

namespace scheduleview {

/// Whether the local storage holds a personal schedule of the employee that starts on exactly \a start, in whatever
/// state.
[[nodiscard]] bool hasPersonalSchedule(quint32 workerId, const QDate &start);

/// The schedule that \a worker follows where no personal one stands; 0 for none. It need not be in the local storage.
[[nodiscard]] quint32 mainScheduleId(const orvex::ObjectInfo &worker);
/// Its name as the local storage holds it, or the words for an employee without one.
[[nodiscard]] QString mainScheduleName(const orvex::ObjectInfo &worker);

/// A new personal schedule of \a worker, named after the employee and the month, for the month that \a start begins.
[[nodiscard]] orvex::SCHEDULE_DATA personalSchedule(const orvex::ObjectInfo &worker, const QDate &start,
                                                    const QString &color);

} // namespace scheduleview
