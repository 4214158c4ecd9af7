#include "calendardaylist.h"

#include "scheduleutil.h"
#include "shiftguide.h"

#include <QVarLengthArray>

namespace {

/// Norms of days for one total. Most days share a few shifts, whose norms are calculated once.
class NormLookup
{
public:
    qint32 norm(const orvex::SCHEDULE_CALENDAR_DAY &day)
    {
        if (!day.intervals.isEmpty())
            return ScheduleUtil::dayNormTime(day, m_shifts, m_intervals);
        for (const Entry &entry : m_entries) {
            if (entry.shiftId == day.shiftId && entry.dayMode == day.dayMode)
                return entry.norm;
        }
        const qint32 norm = ScheduleUtil::dayNormTime(day, m_shifts, m_intervals);
        if (m_entries.size() < MaxEntries)
            m_entries.append({day.shiftId, day.dayMode, norm});
        return norm;
    }

private:
    struct Entry
    {
        quint32 shiftId;
        qint32 dayMode;
        qint32 norm;
    };

    static constexpr int MaxEntries = 8;
    const orvex::ObjectHash *const m_shifts = shiftguide::shifts();
    const orvex::ObjectHash *const m_intervals = shiftguide::intervals();
    QVarLengthArray<Entry, MaxEntries> m_entries;
};

} // namespace

void CalendarDayList::setDays(const QList<orvex::SCHEDULE_CALENDAR_DAY> &days)
{
    m_days = days;
    m_first.clear();
    m_first.reserve(days.size());
    m_next.fill(-1, days.size());
    // Backwards, so that the chain of a date's records is in list order.
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
    NormLookup lookup;
    quint32 total = 0;
    for (qint64 day = first.toJulianDay(); day <= last.toJulianDay(); ++day) {
        for (int pos = m_first.value(day, -1); pos >= 0; pos = m_next.at(pos))
            total += quint32(lookup.norm(m_days.at(pos)));
    }
    return total;
}
