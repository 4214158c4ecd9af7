#pragma once

#include "tqglobals_export.h"

#include <QDataStream>
#include <QDate>
#include <QList>
#include <QMetaType>

namespace orvex {

/// What `SCHEDULE_CALENDAR_DAY::dayMode` says of a day.
enum CalendarDayMode : qint32
{
    DayOff = 0, ///< what a cleared day is
    DayByShift = 1, ///< works by its shift
    DayHoliday = 2, ///< public holiday
    DayPreHoliday = 3, ///< the day before a public holiday, one hour shorter (Labour Code of the RF, art. 95)
};

/// One interval of a calendar day, in seconds from midnight; read like an interval of a shift.
struct SCHEDULE_CALENDAR_INTERVAL
{
    qint32 start = 0;
    qint32 finish = 0;
};

/// One dated day of a schedule. A default-constructed day carries no shift and is off.
struct TQGLOBALS_EXPORT SCHEDULE_CALENDAR_DAY
{
    qint64 revision = 0; ///< revision of the stored row that this day was read from; 0: there was none
    QDate date; ///< the key by which a day is found in a list; the first record of a date wins
    quint32 shiftId = 0; ///< a shift of the guide; 0: none
    qint32 dayMode = DayOff;
    /// The mode that the production calendar laid over the stored one when the day was read; -1: none. A day that comes
    /// back with it untouched is stored with `storedMode`.
    qint32 overlayMode = -1;
    qint32 storedMode = DayOff; ///< what the row itself says under an overlay
    QList<SCHEDULE_CALENDAR_INTERVAL> intervals; ///< the day's own intervals; empty: those of its shift

    /// Resets shift, mode and intervals. The date and the revision stay: the day remains the same row.
    void clear();
};

// Equal in every member, the revision included.
[[nodiscard]] TQGLOBALS_EXPORT bool operator==(const SCHEDULE_CALENDAR_INTERVAL &a,
                                               const SCHEDULE_CALENDAR_INTERVAL &b);
[[nodiscard]] TQGLOBALS_EXPORT bool operator==(const SCHEDULE_CALENDAR_DAY &a, const SCHEDULE_CALENDAR_DAY &b);

// Every member in its order. Counts are bounded as in TQDataStream; after a failure the stream's status says so and the
// record is not to be used.
TQGLOBALS_EXPORT QDataStream &operator<<(QDataStream &stream, const SCHEDULE_CALENDAR_INTERVAL &interval);
TQGLOBALS_EXPORT QDataStream &operator>>(QDataStream &stream, SCHEDULE_CALENDAR_INTERVAL &interval);
TQGLOBALS_EXPORT QDataStream &operator<<(QDataStream &stream, const SCHEDULE_CALENDAR_DAY &day);
TQGLOBALS_EXPORT QDataStream &operator>>(QDataStream &stream, SCHEDULE_CALENDAR_DAY &day);

} // namespace orvex

Q_DECLARE_METATYPE(orvex::SCHEDULE_CALENDAR_DAY)
Q_DECLARE_METATYPE(QList<orvex::SCHEDULE_CALENDAR_DAY>)
