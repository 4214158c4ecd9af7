#include "sampledata.h"

#include "jsonresource.h"
#include "latin1.h"
#include "scheduleutil.h"

#include <QJsonArray>

#include <algorithm>

namespace {

using jsonresource::strings;

constexpr QLatin1String DayOffMark = orvex::latin1("-");

/// "8:30" in seconds; 0 for an empty text.
qint32 seconds(const QString &time)
{
    return time.section(QLatin1Char(':'), 0, 0).toInt() * ScheduleUtil::SecondsPerHour
        + time.section(QLatin1Char(':'), 1, 1).toInt() * ScheduleUtil::SecondsPerMinute;
}

QStringList words(const QJsonValue &value)
{
    return value.toString().split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

SampleUnit unitOf(const QJsonObject &json)
{
    return {json[QLatin1String("name")].toString(), json[QLatin1String("parent")].toString(),
            json[QLatin1String("weight")].toInt(1), strings(json[QLatin1String("positions")]),
            strings(json[QLatin1String("schedules")])};
}

store::GuideShift shiftOf(const QJsonObject &json)
{
    store::GuideShift shift;
    shift.name = json[QLatin1String("name")].toString();
    shift.code = json[QLatin1String("code")].toString();
    shift.color = json[QLatin1String("color")].toString();
    const QStringList times = words(json[QLatin1String("times")]);
    for (const QString &interval : times) {
        shift.intervals.append(
            {seconds(interval.section(QLatin1Char('-'), 0, 0)), seconds(interval.section(QLatin1Char('-'), 1, 1))});
    }
    return shift;
}

QList<int> cycleOf(const QJsonObject &json, const QList<store::GuideShift> &shifts)
{
    QList<int> cycle;
    const QStringList codes = words(json[QLatin1String("cycle")]);
    for (const QString &code : codes) {
        const auto shift = std::find_if(shifts.cbegin(), shifts.cend(), [&](const auto &s) { return s.code == code; });
        Q_ASSERT(shift != shifts.cend() || code == DayOffMark);
        cycle.append(shift == shifts.cend() ? -1 : int(shift - shifts.cbegin()));
    }
    return cycle;
}

orvex::SCHEDULE_SHIFT workShift(const store::GuideShift &guide)
{
    orvex::SCHEDULE_SHIFT shift;
    shift.id = -1;
    for (const auto &interval : guide.intervals)
        shift.times.append({-1, interval.start, interval.finish});
    return shift;
}

/// Sets the days of a cycle and, each once, the shifts that it uses.
void setWorkMode(orvex::SCHEDULE_DATA &record, const QList<int> &cycle, const QList<store::GuideShift> &shifts)
{
    QList<int> used;
    for (const int guide : cycle) {
        orvex::SCHEDULE_DAY day;
        day.id = -1;
        if (guide >= 0) {
            if (!used.contains(guide)) {
                used.append(guide);
                record.shifts.append(workShift(shifts.at(guide)));
            }
            day.shift = used.indexOf(guide);
            day.dayOff = false;
        }
        record.days.append(day);
    }
}

SampleSchedule scheduleOf(const QJsonObject &json, const SampleData &data, int year)
{
    SampleSchedule schedule;
    schedule.cycle = cycleOf(json, data.shifts);
    auto &record = schedule.record;
    record.name = json[QLatin1String("name")].toString();
    record.type = orvex::ScheduleMode(json[QLatin1String("type")].toInt());
    record.state = orvex::ScheduleStateActive;
    record.color = json[QLatin1String("color")].toString();
    if (record.type == orvex::ScheduleCalendar) {
        record.startDate = QDate(year, 1, 1);
        record.useHolidays = json[QLatin1String("holidays")].toBool() ? 1 : 0;
        return schedule;
    }
    record.useHolidays = 1;
    if (!json[QLatin1String("perEmployee")].toBool())
        record.startDate = data.cycleStart;
    setWorkMode(record, schedule.cycle, data.shifts);
    const QJsonObject free = json[QLatin1String("free")].toObject();
    record.freeStart = seconds(free[QLatin1String("start")].toString());
    record.freeFinish = seconds(free[QLatin1String("finish")].toString());
    record.freeNorm = seconds(free[QLatin1String("norm")].toString());
    record.freeBreak = seconds(free[QLatin1String("break")].toString());
    return schedule;
}

} // namespace

SampleData SampleData::load(int year)
{
    const QJsonObject json = jsonresource::read(QStringLiteral("organisation.json"));
    SampleData data;
    data.root = json[QLatin1String("root")].toString();
    data.firm = json[QLatin1String("firm")].toString();
    const QDate newYear(year, 1, 1);
    data.cycleStart = newYear.addDays(1 - newYear.dayOfWeek());
    const QJsonArray units = json[QLatin1String("units")].toArray();
    for (const QJsonValue &unit : units)
        data.units.append(unitOf(unit.toObject()));
    const QJsonArray shifts = json[QLatin1String("shifts")].toArray();
    for (const QJsonValue &shift : shifts)
        data.shifts.append(shiftOf(shift.toObject()));
    const QJsonArray schedules = json[QLatin1String("schedules")].toArray();
    for (const QJsonValue &schedule : schedules)
        data.schedules.append(scheduleOf(schedule.toObject(), data, year));
    return data;
}

QList<orvex::SCHEDULE_CALENDAR_DAY> daysByCycle(const QList<int> &cycle, const QList<quint32> &shiftIds,
                                                const QDate &start, const QDate &first, const QDate &last)
{
    QList<orvex::SCHEDULE_CALENDAR_DAY> days;
    for (QDate date = first; date <= last; date = date.addDays(1)) {
        orvex::SCHEDULE_CALENDAR_DAY day;
        day.date = date;
        const qint64 length = cycle.size();
        const qint64 position = length == 0 ? 0 : (start.daysTo(date) % length + length) % length;
        const int shift = length == 0 ? -1 : cycle.at(int(position));
        if (shift >= 0) {
            day.shiftId = shiftIds.at(shift);
            day.dayMode = orvex::DayByShift;
        }
        days.append(day);
    }
    return days;
}
