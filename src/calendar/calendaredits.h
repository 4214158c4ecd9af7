#pragma once

#include "calendardays.h"

#include <QHash>
#include <QList>

/// The operator's edits of a calendar whose days are read again while they work, a year at a time. A day whose content
/// differs from what was read is an edit.
class CalendarEdits
{
public:
    using Days = QList<orvex::SCHEDULE_CALENDAR_DAY>;

    /// Remembers \a read and returns the calendar's new list: the edits in \a held, its present list, in place of the
    /// read days of the same dates. Unedited days of \a shownYear are kept only if \a read has no day of that year.
    [[nodiscard]] Days merged(const Days &read, const Days &held, int shownYear);

private:
    /// The first record of each date, if it is edited.
    [[nodiscard]] Days edited(const Days &held) const;

    QHash<QDate, orvex::SCHEDULE_CALENDAR_DAY>
        m_read; ///< the first record of each date; an edited one as it was before
};
