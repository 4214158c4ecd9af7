#include "calendardaysloader.h"

#include "calendarwidget.h"
#include "svc.h"

#include <QLoggingCategory>
#include <QTimer>

CalendarDaysLoader::CalendarDaysLoader(int scheduleId, CalendarWidget *calendar)
    : QObject(calendar)
    , m_scheduleId(scheduleId)
    , m_calendar(calendar)
{
}

void CalendarDaysLoader::request(int year)
{
    m_requestedYear = year;
    m_awaitedYear = year;
    emit daysRequest(m_scheduleId, year);
}

void CalendarDaysLoader::requestLater(int year)
{
    m_requestedYear = year;
    m_awaitedYear = year;
    QTimer::singleShot(0, this, [this] { emit daysRequest(m_scheduleId, m_requestedYear); });
}

void CalendarDaysLoader::requestMissing()
{
    if (m_awaitedYear != 0)
        emit daysRequest(m_scheduleId, m_awaitedYear);
}

bool CalendarDaysLoader::setDays(int scheduleId, const CalendarEdits::Days &days)
{
    qCDebug(svc()) << "days" << scheduleId << days.size();
    if (scheduleId != m_scheduleId) {
        qCWarning(svc()) << "wrong schedule id" << m_scheduleId << scheduleId;
        return false;
    }
    m_awaitedYear = 0;
    // The same days again would reset the grid, perhaps in the middle of a selection.
    if (m_readYear == m_requestedYear && m_readDays == days)
        return true;
    m_readYear = m_requestedYear;
    m_readDays = days;
    m_calendar->setDays(m_edits.merged(days, m_calendar->days(), m_readYear));
    return true;
}
