#pragma once

#include "calendardays.h"
#include "schedules.h"

#include <QList>

namespace store {
class Connection;
}

/// Queries on the tables of schedules, shared by requests and bulk writing. The connection keeps the first failure.
namespace store::schedulequeries {

/// Stores a new active schedule with version 1. Returns its identifier, or 0 after a failure.
[[nodiscard]] quint32 insertSchedule(Connection &connection, const orvex::SCHEDULE_DATA &schedule);

/// The days of a schedule from \a first to \a last, ordered by date.
[[nodiscard]] QList<orvex::SCHEDULE_CALENDAR_DAY> calendarDays(Connection &connection, quint32 schedule,
                                                               const QDate &first, const QDate &last);

/// Adds or replaces days; \a days must not contain a date twice. Returns false after a failure.
[[nodiscard]] bool storeCalendarDays(Connection &connection, quint32 schedule,
                                     const QList<orvex::SCHEDULE_CALENDAR_DAY> &days);

/// The first record of every date, in the given order, with the mode to store. A mode that the production calendar has
/// applied is not the operator's choice and is not stored.
[[nodiscard]] QList<orvex::SCHEDULE_CALENDAR_DAY> daysToStore(const QList<orvex::SCHEDULE_CALENDAR_DAY> &days);

} // namespace store::schedulequeries
