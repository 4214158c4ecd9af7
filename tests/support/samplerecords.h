#pragma once

#include "calendardays.h"
#include "schedules.h"

#include <QMap>

/// Records of schedules and of their days.
namespace support {

constexpr int Minute = 60;
constexpr int Hour = 3600;

/// A shown schedule with an identifier, as the client's cache holds it.
[[nodiscard]] orvex::SCHEDULE_DATA schedule(int id, const QString &name,
                                            orvex::ScheduleMode type = orvex::ScheduleFixed);
/// A shown schedule of one employee and month.
[[nodiscard]] orvex::SCHEDULE_DATA personalSchedule(int id, const QString &name, quint32 employeeId,
                                                    const QDate &month);
/// A schedule that the store has not numbered yet.
[[nodiscard]] orvex::SCHEDULE_DATA newSchedule(const QString &name, orvex::ScheduleMode type = orvex::ScheduleFixed);
/// The shifts 11 (08:00–12:00, 13:00–17:00) and 12 (20:00–06:00), a day for each of them, and a day off.
[[nodiscard]] orvex::SCHEDULE_DATA shiftCycle();

/// A shift without an identifier; starts and ends in seconds.
[[nodiscard]] orvex::SCHEDULE_SHIFT shift(const QList<QPair<int, int>> &intervals);
/// A day that works by the shift at a position of its schedule.
[[nodiscard]] orvex::SCHEDULE_DAY workingDay(int shift);

[[nodiscard]] orvex::SCHEDULE_CALENDAR_DAY calendarDay(const QDate &date, quint32 shiftId,
                                                       qint32 mode = orvex::DayByShift, qint64 revision = 0);
[[nodiscard]] QMap<QDate, quint32> shiftsByDate(const QList<orvex::SCHEDULE_CALENDAR_DAY> &days);

/// Name, days and shifts in hours: "Name: 0 1 - | 8-12 13-17.5 | 20-6"; of a free schedule limits, norm-break.
/// "?" is a day that is neither a working day nor a day off, or both.
[[nodiscard]] QString scheduleText(const orvex::SCHEDULE_DATA &schedule);

} // namespace support
