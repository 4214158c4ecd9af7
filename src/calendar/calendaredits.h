#pragma once

#include "calendardays.h"

#include <QHash>
#include <QList>

/// Keeps the operator's edits in a calendar whose days are read again while they work, one year at a time. A day is
/// edited if its content differs from what was read.
class CalendarEdits
{
public:
    using Days = QList<orvex::SCHEDULE_CALENDAR_DAY>;

    /// Remembers \a read and returns the calendar's new list: the edited days of \a current, its list so far, and the
    /// other days of \a read. If \a read has no day of \a shownYear, unedited days of that year are kept, too.
    [[nodiscard]] Days merged(const Days &read, const Days &current, int shownYear);

private:
    /// The first record of each date, if it is edited.
    [[nodiscard]] Days edited(const Days &current) const;

    /// The first record of each date; that of an edited date is the one read before the edit.
    QHash<QDate, orvex::SCHEDULE_CALENDAR_DAY> m_read;
};
