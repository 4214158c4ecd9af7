#pragma once

#include "tqglobals_export.h"

#include <QDataStream>
#include <QDate>
#include <QHash>
#include <QList>
#include <QMetaType>
#include <QString>

namespace orvex {

/// Schedule type. The values are part of the wire format and of the store.
enum ScheduleMode : qint32
{
    ScheduleFixed = 0, ///< a working week of seven days, Monday first
    ScheduleShift = 1, ///< a cycle of days that starts on one date or on each employee's own
    ScheduleFree = 2, ///< only limits on start, finish, daily norm and break
    ScheduleCalendar = 3, ///< each date of a year has its own shift
    SchedulePersonal = 4, ///< the calendar days of one month for one employee
};

/// `SCHEDULE_DATA::state` of a record in use; any other state is not shown.
constexpr qint32 ScheduleStateActive = 1;

/// One working interval of a shift, in seconds from midnight. A finish before the start is on the next day, equal
/// non-zero times are 24 hours, 0–0 is empty.
struct SCHEDULE_SHIFT_TIME
{
    qint32 id = 0; ///< -1: not stored yet
    qint32 start = 0;
    qint32 finish = 0;
};

/// A shift: its intervals in the operator's order; the gaps between consecutive ones are its breaks.
struct TQGLOBALS_EXPORT SCHEDULE_SHIFT
{
    qint32 id = 0; ///< -1: not stored yet
    qint32 flags = 0; ///< kept unchanged
    QList<SCHEDULE_SHIFT_TIME> times;

    /// Start of the first interval in time order, in seconds from midnight; 0 without intervals.
    [[nodiscard]] qint32 start() const;
    /// Finish of the last interval in time order, in seconds from midnight; 0 without intervals.
    [[nodiscard]] qint32 finish() const;
    /// Sum of the gaps between consecutive intervals, in seconds.
    [[nodiscard]] qint32 break_time() const;
};

/// One day of the work mode.
struct SCHEDULE_DAY
{
    qint32 id = 0; ///< -1: not stored yet
    qint32 shift = -1; ///< position in the schedule's `shifts`; -1: none
    qint32 shiftId = -1; ///< the `id` of that shift; -1: none
    bool dayOff = true;

    /// Resets everything but `id`: a day off without a shift.
    void clear() { *this = {id}; }
};

/// One work schedule.
struct SCHEDULE_DATA
{
    qint32 id = 0; ///< assigned by the store, from 1
    QString name;
    qint32 state = 0; ///< `ScheduleStateActive` or a state that is not shown
    ScheduleMode type = ScheduleFixed;
    QString color; ///< `QColor::name()` text; empty: none
    QDate startDate; ///< reference date of the cycle, first day of the year or of the month; null: per employee
    qint32 useHolidays = 0; ///< 1: public holidays are taken into account
    QList<SCHEDULE_DAY> days;
    QList<SCHEDULE_SHIFT> shifts;
    qint32 freeStart = 0; ///< free type, seconds from midnight; 0: not used
    qint32 freeFinish = 0; ///< free type, seconds from midnight; 0: not used
    qint32 freeNorm = 0; ///< free type, seconds; 0: not used
    qint32 freeBreak = 0; ///< free type, seconds; 0: not used
    QString comment; ///< kept unchanged
    quint32 workerId = 0; ///< personal type: the employee; 0 otherwise
    qint64 version = 0; ///< raised by the store with each change; an update with an old version is refused
};

// Equal in every member.
[[nodiscard]] TQGLOBALS_EXPORT bool operator==(const SCHEDULE_SHIFT_TIME &a, const SCHEDULE_SHIFT_TIME &b);
[[nodiscard]] TQGLOBALS_EXPORT bool operator==(const SCHEDULE_SHIFT &a, const SCHEDULE_SHIFT &b);
[[nodiscard]] TQGLOBALS_EXPORT bool operator==(const SCHEDULE_DAY &a, const SCHEDULE_DAY &b);
[[nodiscard]] TQGLOBALS_EXPORT bool operator==(const SCHEDULE_DATA &a, const SCHEDULE_DATA &b);

// All members in the order of their declaration, the type as a qint32. Counts are bounded as in TQDataStream. After a
// failure the stream's status is not Ok and the record must not be used.
TQGLOBALS_EXPORT QDataStream &operator<<(QDataStream &stream, const SCHEDULE_SHIFT_TIME &time);
TQGLOBALS_EXPORT QDataStream &operator>>(QDataStream &stream, SCHEDULE_SHIFT_TIME &time);
TQGLOBALS_EXPORT QDataStream &operator<<(QDataStream &stream, const SCHEDULE_SHIFT &shift);
TQGLOBALS_EXPORT QDataStream &operator>>(QDataStream &stream, SCHEDULE_SHIFT &shift);
TQGLOBALS_EXPORT QDataStream &operator<<(QDataStream &stream, const SCHEDULE_DAY &day);
TQGLOBALS_EXPORT QDataStream &operator>>(QDataStream &stream, SCHEDULE_DAY &day);
TQGLOBALS_EXPORT QDataStream &operator<<(QDataStream &stream, const SCHEDULE_DATA &schedule);
TQGLOBALS_EXPORT QDataStream &operator>>(QDataStream &stream, SCHEDULE_DATA &schedule);

/// Schedules by identifier.
using ScheduleHash = QHash<quint32, SCHEDULE_DATA>;

} // namespace orvex

Q_DECLARE_METATYPE(orvex::ScheduleMode)
Q_DECLARE_METATYPE(orvex::SCHEDULE_DATA)
