#include "calendardaylist.h"

#include "scheduleutil.h"
#include "shiftguide.h"

void CalendarDayList::setDays(const QList<orvex::SCHEDULE_CALENDAR_DAY> &days)
{
    m_days = days;
    m_first.clear();
    m_first.reserve(days.size());
    m_next.fill(-1, days.size());
    // From the back, so that a date's chain of records runs in the order of the list.
    for (int i = days.size() - 1; i >= 0; --i) {
        const QDate date = days.at(i).date;
        if (!date.isValid())
            continue;
        m_next[i] = position(date);
        m_first.insert(date.toJulianDay(), i);
    }
}

const orvex::SCHEDULE_CALENDAR_DAY *CalendarDayList::find(const QDate &date) const
{
    const int pos = position(date);
    return pos < 0 ? nullptr : &m_days.at(pos);
}

void CalendarDayList::putShift(const QDate &date, quint32 shiftId)
{
    int pos = position(date);
    if (pos < 0 && shiftId == 0)
        return;
    if (pos < 0) {
        pos = m_days.size();
        orvex::SCHEDULE_CALENDAR_DAY day;
        day.date = date;
        m_days.append(day);
        m_next.append(-1);
        m_first.insert(date.toJulianDay(), pos);
    }
    orvex::SCHEDULE_CALENDAR_DAY &day = m_days[pos];
    day.clear();
    if (shiftId == 0)
        return;
    day.dayMode = orvex::DayByShift;
    day.shiftId = shiftId;
}

quint32 CalendarDayList::normTotal(const QDate &first, const QDate &last) const
{
    const auto shifts = shiftguide::shifts();
    const auto intervals = shiftguide::intervals();
    quint32 total = 0;
    for (qint64 day = first.toJulianDay(); day <= last.toJulianDay(); ++day) {
        for (int pos = m_first.value(day, -1); pos >= 0; pos = m_next.at(pos))
            total += quint32(ScheduleUtil::dayNormTime(m_days.at(pos), shifts, intervals));
    }
    return total;
}
