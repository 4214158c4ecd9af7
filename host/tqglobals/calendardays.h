#pragma once

#include "tqglobals_export.h"

#include <QDataStream>
#include <QDate>
#include <QList>
#include <QMetaType>

namespace orvex {

/// Values of `SCHEDULE_CALENDAR_DAY::dayMode`.
enum CalendarDayMode : qint32
{
    DayOff = 0, ///< also the mode of a cleared day
    DayByShift = 1, ///< worked by its shift
    DayHoliday = 2, ///< public holiday
    DayPreHoliday = 3, ///< the day before a public holiday, one hour shorter (Labour Code of the RF, art. 95)
};

/// One interval of a calendar day, in seconds from midnight; the rules of `SCHEDULE_SHIFT_TIME` apply.
struct SCHEDULE_CALENDAR_INTERVAL
{
    qint32 start = 0;
    qint32 finish = 0;
};

/// One dated day of a schedule. A default-constructed day is a day off without a shift.
struct TQGLOBALS_EXPORT SCHEDULE_CALENDAR_DAY
{
    qint64 revision = 0; ///< revision of the stored row when this day was read; 0: there was no row
    QDate date; ///< the key of a day in a list; the first record of a date wins
    quint32 shiftId = 0; ///< a shift of the guide; 0: none
    qint32 dayMode = DayOff;
    /// The mode that the production calendar set instead of the stored one when the day was read; -1: none. A day that
    /// is saved with this mode unchanged is stored with `storedMode`.
    qint32 overlayMode = -1;
    qint32 storedMode = DayOff; ///< the mode in the row while `overlayMode` is set
    QList<SCHEDULE_CALENDAR_INTERVAL> intervals; ///< the day's own intervals; empty: the shift's

    /// Resets shift, mode and intervals. Date and revision stay, because the day remains the same row.
    void clear();
};

// Equal in every member, the revision included.
[[nodiscard]] TQGLOBALS_EXPORT bool operator==(const SCHEDULE_CALENDAR_INTERVAL &a,
                                               const SCHEDULE_CALENDAR_INTERVAL &b);
[[nodiscard]] TQGLOBALS_EXPORT bool operator==(const SCHEDULE_CALENDAR_DAY &a, const SCHEDULE_CALENDAR_DAY &b);
/// Equal in what an operator can change: shift, mode and intervals.
[[nodiscard]] TQGLOBALS_EXPORT bool hasSameContent(const SCHEDULE_CALENDAR_DAY &a, const SCHEDULE_CALENDAR_DAY &b);

// All members in the order of their declaration. Counts are bounded as in TQDataStream. After a failure the stream's
// status is not Ok and the record must not be used.
TQGLOBALS_EXPORT QDataStream &operator<<(QDataStream &stream, const SCHEDULE_CALENDAR_INTERVAL &interval);
TQGLOBALS_EXPORT QDataStream &operator>>(QDataStream &stream, SCHEDULE_CALENDAR_INTERVAL &interval);
TQGLOBALS_EXPORT QDataStream &operator<<(QDataStream &stream, const SCHEDULE_CALENDAR_DAY &day);
TQGLOBALS_EXPORT QDataStream &operator>>(QDataStream &stream, SCHEDULE_CALENDAR_DAY &day);

} // namespace orvex

Q_DECLARE_METATYPE(orvex::SCHEDULE_CALENDAR_DAY)
Q_DECLARE_METATYPE(QList<orvex::SCHEDULE_CALENDAR_DAY>)
