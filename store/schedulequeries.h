#pragma once

#include "calendardays.h"
#include "schedules.h"

#include <QList>

namespace store {
class Connection;
}

/// Steps on the tables of schedules that requests and bulk writing share. A failure is kept by the connection.
namespace store::schedulequeries {

/// Stores a new schedule, in use and with version 1; gives its identifier, 0 after a failure.
[[nodiscard]] quint32 insertSchedule(Connection &connection, const orvex::SCHEDULE_DATA &schedule);

/// The days of a schedule from \a first to \a last, in order of date.
[[nodiscard]] QList<orvex::SCHEDULE_CALENDAR_DAY> calendarDays(Connection &connection, quint32 schedule,
                                                               const QDate &first, const QDate &last);

/// Stores new days and the new contents of stored ones; every date only once. False after a failure.
[[nodiscard]] bool storeCalendarDays(Connection &connection, quint32 schedule,
                                     const QList<orvex::SCHEDULE_CALENDAR_DAY> &days);

/// The first record of every date, in the order given, each with the mode that is to be stored: what the production
/// calendar laid over it is not the operator's choice.
[[nodiscard]] QList<orvex::SCHEDULE_CALENDAR_DAY> daysToStore(const QList<orvex::SCHEDULE_CALENDAR_DAY> &days);

} // namespace store::schedulequeries
