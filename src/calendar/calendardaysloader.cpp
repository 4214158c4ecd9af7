#include "calendardaysloader.h"

#include "calendarwidget.h"
#include "svc.h"

#include <QLoggingCategory>
#include <QTimer>

#include <utility>

CalendarDaysLoader::CalendarDaysLoader(int scheduleId, CalendarWidget *calendar)
    : QObject(calendar)
    , m_scheduleId(scheduleId)
    , m_calendar(calendar)
{
}

void CalendarDaysLoader::request(int year)
{
    m_requestedYear = year;
    m_isWaiting = true;
    emit daysRequest(m_scheduleId, year);
}

void CalendarDaysLoader::requestLater(int year)
{
    m_requestedYear = year;
    m_isWaiting = true;
    QTimer::singleShot(0, this, [this] { emit daysRequest(m_scheduleId, m_requestedYear); });
}

void CalendarDaysLoader::requestMissing()
{
    if (m_isWaiting)
        emit daysRequest(m_scheduleId, m_requestedYear);
}

bool CalendarDaysLoader::setDays(int scheduleId, const CalendarEdits::Days &days)
{
    const auto replyYear = std::exchange(m_replyYear, std::nullopt);
    qCDebug(svc()) << "days" << scheduleId << days.size();
    if (scheduleId != m_scheduleId) {
        qCWarning(svc()) << "wrong schedule id" << m_scheduleId << scheduleId;
        return false;
    }
    if (replyYear && *replyYear != m_requestedYear)
        return false;
    m_isWaiting = false;
    // The same days again would reset the grid, perhaps in the middle of a selection.
    if (m_readYear == m_requestedYear && m_readDays == days)
        return true;
    m_readYear = m_requestedYear;
    m_readDays = days;
    m_calendar->setDays(m_edits.merged(days, m_calendar->days(), m_readYear));
    return true;
}
