#pragma once

#include "calendardays.h"

#include <QHash>
#include <QList>

/// Keeps the marks that an operator puts on the days of one year while he looks at another. It remembers each day as it
/// was read, and so knows which ones he has changed.
class CalendarEdits
{
public:
    using Days = QList<orvex::SCHEDULE_CALENDAR_DAY>;

    /// Whether any days have been taken in.
    [[nodiscard]] bool hasAnswer() const { return m_answeredYear != 0; }
    /// False for the answer that has been taken in last: the calendar holds it already.
    [[nodiscard]] bool isNews(const Days &read, int shownYear) const;
    /// Takes in the days that were read for a year and returns what the calendar is to hold: \a read with the
    /// operator's changes in \a held, the calendar's present list, laid over them, and his changes of other years. Days
    /// that were read for \a shownYear stay while \a read has none of that year.
    [[nodiscard]] Days merged(const Days &read, const Days &held, int shownYear);

private:
    /// The first record of each date in \a held that differs from what was read.
    [[nodiscard]] Days changes(const Days &held) const;

    QHash<QDate, orvex::SCHEDULE_CALENDAR_DAY> m_read; ///< the first record of each date, as it was read
    Days m_answer; ///< taken in last
    int m_answeredYear = 0;
};
