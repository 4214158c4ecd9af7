#include "calendaredits.h"

#include <QSet>

#include <algorithm>

using orvex::SCHEDULE_CALENDAR_DAY;

CalendarEdits::Days CalendarEdits::merged(const Days &read, const Days &current, int shownYear)
{
    const auto isShown = [shownYear](const SCHEDULE_CALENDAR_DAY &day) { return day.date.year() == shownYear; };
    const bool keepShown = std::none_of(read.cbegin(), read.cend(), isShown);
    Days days = edited(current);
    QSet<QDate> editedDates;
    for (const auto &day : qAsConst(days))
        editedDates.insert(day.date);

    for (const auto &day : current) {
        if (keepShown && isShown(day) && !editedDates.contains(day.date))
            days.append(day);
    }
    QSet<QDate> seen = editedDates;
    for (const auto &day : read) {
        if (!editedDates.contains(day.date))
            days.append(day);
        if (seen.contains(day.date))
            continue;
        seen.insert(day.date);
        m_read.insert(day.date, day);
    }
    return days;
}

CalendarEdits::Days CalendarEdits::edited(const Days &current) const
{
    Days days;
    QSet<QDate> seen;
    for (const auto &day : current) {
        if (!day.date.isValid() || seen.contains(day.date))
            continue;
        seen.insert(day.date);
        const auto read = m_read.constFind(day.date);
        if (read == m_read.constEnd() || !hasSameContent(*read, day))
            days.append(day);
    }
    return days;
}
