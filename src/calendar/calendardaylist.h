#pragma once

#include "calendardays.h"

#include <QHash>
#include <QList>
#include <QVector>

/// The calendar days of a schedule, indexed by date.
///
/// The list may hold several records of one date: the first one is found and edited, totals include all. Records
/// without a valid date are kept and never found.
class CalendarDayList
{
public:
    [[nodiscard]] const QList<orvex::SCHEDULE_CALENDAR_DAY> &days() const { return m_days; }
    void setDays(const QList<orvex::SCHEDULE_CALENDAR_DAY> &days);

    /// Position of the date's first record; -1: none, or the date is invalid.
    [[nodiscard]] int position(const QDate &date) const { return m_first.value(date.toJulianDay(), -1); }
    /// The date's first record; null: none. Valid until the list changes.
    [[nodiscard]] const orvex::SCHEDULE_CALENDAR_DAY *find(const QDate &date) const;

    /// Assigns a shift of the guide to a date; a date without a record gets one. Shift 0 clears an existing record and
    /// keeps it in the list.
    void putShift(const QDate &date, quint32 shiftId);

    /// Seconds worked from \a first to \a last, inclusive, in all records of these dates.
    [[nodiscard]] quint32 normTotal(const QDate &first, const QDate &last) const;

private:
    QList<orvex::SCHEDULE_CALENDAR_DAY> m_days;
    QHash<qint64, int> m_first; ///< position of a date's first record, by Julian day
    QVector<int> m_next; ///< position of the next record of the same date; -1: none
};
