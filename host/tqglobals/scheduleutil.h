#pragma once

#include "calendardays.h"
#include "objects.h"
#include "schedules.h"
#include "tqglobals_export.h"

#include <QDate>
#include <QString>
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

    /// A time of day as seconds from midnight.
    [[nodiscard]] static qint32 secondsOf(const QTime &time);
    /// The time of day that so many seconds from midnight are; past 24 hours it starts anew.
    [[nodiscard]] static QTime timeOf(qint32 seconds);
    /// The Monday of the week that \a date lies in.
    [[nodiscard]] static QDate mondayOf(const QDate &date);
    /// The last day of the month that \a date lies in; null for a null date.
    [[nodiscard]] static QDate lastOfMonth(const QDate &date);

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

    // The same of a calendar day: by its own intervals where it has them, else by those of its shift in the guide.
    // A day that is not worked has none. `shifts` and `intervals` are the guide; null is an empty one.

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
    /// End of the working day; of one that ends on the next day, its time there.
    [[nodiscard]] static qint32 dayFinishTime(const orvex::SCHEDULE_CALENDAR_DAY &day, const orvex::ObjectHash *shifts,
                                              const orvex::ObjectHash *intervals);

    /// True for a day off and a public holiday: the day is shown as not worked.
    [[nodiscard]] static bool isHoliday(const orvex::SCHEDULE_CALENDAR_DAY &day);
};
