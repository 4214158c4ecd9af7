#include "calendaredits.h"

#include <QSet>

#include <algorithm>

namespace {

using orvex::SCHEDULE_CALENDAR_DAY;
using orvex::SCHEDULE_CALENDAR_INTERVAL;

bool isSame(const SCHEDULE_CALENDAR_DAY &a, const SCHEDULE_CALENDAR_DAY &b)
{
    const auto sameTimes = [](const SCHEDULE_CALENDAR_INTERVAL &x, const SCHEDULE_CALENDAR_INTERVAL &y) {
        return x.start == y.start && x.finish == y.finish;
    };
    return a.shiftId == b.shiftId && a.dayMode == b.dayMode
        && std::equal(a.intervals.cbegin(), a.intervals.cend(), b.intervals.cbegin(), b.intervals.cend(), sameTimes);
}

} // namespace

bool CalendarEdits::isNews(const Days &read, int shownYear) const
{
    return shownYear != m_answeredYear || read != m_answer;
}

CalendarEdits::Days CalendarEdits::merged(const Days &read, const Days &held, int shownYear)
{
    m_answer = read;
    m_answeredYear = shownYear;
    const auto isShown = [shownYear](const SCHEDULE_CALENDAR_DAY &day) { return day.date.year() == shownYear; };
    const bool keepShown = std::none_of(read.cbegin(), read.cend(), isShown);
    const Days changed = changes(held);
    QSet<QDate> changedDates;
    for (const auto &day : changed)
        changedDates.insert(day.date);

    Days days = changed;
    for (const auto &day : held) {
        if (keepShown && isShown(day) && !changedDates.contains(day.date))
            days.append(day);
    }
    QSet<QDate> seen = changedDates;
    for (const auto &day : read) {
        if (!changedDates.contains(day.date))
            days.append(day);
        if (seen.contains(day.date))
            continue;
        seen.insert(day.date);
        m_read.insert(day.date, day);
    }
    return days;
}

CalendarEdits::Days CalendarEdits::changes(const Days &held) const
{
    Days changed;
    QSet<QDate> seen;
    for (const auto &day : held) {
        if (!day.date.isValid() || seen.contains(day.date))
            continue;
        seen.insert(day.date);
        const auto read = m_read.constFind(day.date);
        if (read == m_read.constEnd() || !isSame(*read, day))
            changed.append(day);
    }
    return changed;
}
