#pragma once

#include "calendardays.h"
#include "objects.h"
#include "schedules.h"
#include "tqglobals_export.h"

#include <QDate>
#include <QTime>

/// Working-time arithmetic. Every result is in seconds; times of day are seconds from midnight.
///
/// An interval whose finish is before its start ends on the next day; equal non-zero times are 24 hours; 0–0 is empty.
class TQGLOBALS_EXPORT ScheduleUtil
{
public:
    static constexpr qint32 SecondsPerMinute = 60;
    static constexpr qint32 SecondsPerHour = 60 * SecondsPerMinute;
    static constexpr qint32 SecondsPerDay = 24 * SecondsPerHour;
    static constexpr int DaysPerWeek = 7;
    static constexpr int MonthsPerYear = 12;

    /// A time of day as seconds from midnight.
    [[nodiscard]] static qint32 secondsOf(const QTime &time);
    /// The time of day \a seconds after midnight, modulo 24 hours.
    [[nodiscard]] static QTime timeOf(qint32 seconds);
    /// The Monday of the week of \a date.
    [[nodiscard]] static QDate mondayOf(const QDate &date);
    /// The last day of the month of \a date; null for a null date.
    [[nodiscard]] static QDate lastOfMonth(const QDate &date);
    /// 31 December of the date's year; null for a null date.
    [[nodiscard]] static QDate lastOfYear(const QDate &date);

    /// Start of the first interval in time order; 0 without intervals.
    [[nodiscard]] static qint32 startTime(const QList<orvex::SCHEDULE_SHIFT_TIME> &times);
    /// Finish of the last interval in time order, up to 24 hours; 0 without intervals.
    [[nodiscard]] static qint32 finishTime(const QList<orvex::SCHEDULE_SHIFT_TIME> &times);
    /// Sum of the gaps between consecutive intervals.
    [[nodiscard]] static qint32 breakTime(const QList<orvex::SCHEDULE_SHIFT_TIME> &times);
    /// Sum of the intervals.
    [[nodiscard]] static qint32 normTime(const QList<orvex::SCHEDULE_SHIFT_TIME> &times);
    /// The part between 22:00 and 06:00 (Labour Code of the Russian Federation, art. 96).
    [[nodiscard]] static qint32 nightTime(const QList<orvex::SCHEDULE_SHIFT_TIME> &times);

    // The same for a calendar day: by its own intervals if it has any, else by those of its shift in the guide. A day
    // that is not worked has none. `shifts` and `intervals` are the guide; null means an empty guide.

    /// Working time. The norm of a pre-holiday day is one hour shorter (art. 95), never below 0.
    [[nodiscard]] static qint32 dayNormTime(const orvex::SCHEDULE_CALENDAR_DAY &day, const orvex::ObjectHash *shifts,
                                            const orvex::ObjectHash *intervals);
    /// Gaps between the intervals.
    [[nodiscard]] static qint32 dayBreakTime(const orvex::SCHEDULE_CALENDAR_DAY &day, const orvex::ObjectHash *shifts,
                                             const orvex::ObjectHash *intervals);
    /// Night work (art. 96).
    [[nodiscard]] static qint32 dayNightTime(const orvex::SCHEDULE_CALENDAR_DAY &day, const orvex::ObjectHash *shifts,
                                             const orvex::ObjectHash *intervals);
    /// Start of the working day.
    [[nodiscard]] static qint32 dayStartTime(const orvex::SCHEDULE_CALENDAR_DAY &day, const orvex::ObjectHash *shifts,
                                             const orvex::ObjectHash *intervals);
    /// End of the working day; if it is on the next day, the time of day there.
    [[nodiscard]] static qint32 dayFinishTime(const orvex::SCHEDULE_CALENDAR_DAY &day, const orvex::ObjectHash *shifts,
                                              const orvex::ObjectHash *intervals);

    /// Whether the day is not worked: a day off or a public holiday.
    [[nodiscard]] static bool isHoliday(const orvex::SCHEDULE_CALENDAR_DAY &day);
};
