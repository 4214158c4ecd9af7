#include "samplerecords.h"

namespace support {

orvex::SCHEDULE_DATA schedule(int id, const QString &name, orvex::ScheduleMode type)
{
    auto record = newSchedule(name, type);
    record.id = id;
    record.state = orvex::ScheduleStateActive;
    return record;
}

orvex::SCHEDULE_DATA personalSchedule(int id, const QString &name, quint32 employeeId, const QDate &month)
{
    auto record = schedule(id, name, orvex::SchedulePersonal);
    record.workerId = employeeId;
    record.startDate = month;
    return record;
}

orvex::SCHEDULE_DATA newSchedule(const QString &name, orvex::ScheduleMode type)
{
    orvex::SCHEDULE_DATA record;
    record.name = name;
    record.type = type;
    return record;
}

orvex::SCHEDULE_DATA shiftCycle()
{
    auto record = newSchedule({}, orvex::ScheduleShift);
    record.shifts = {{11, 0, {{1, 8 * Hour, 12 * Hour}, {2, 13 * Hour, 17 * Hour}}},
                     {12, 0, {{3, 20 * Hour, 6 * Hour}}}};
    record.days = {{1, 0, 11, false}, {2, 1, 12, false}, {3, -1, -1, true}};
    return record;
}

orvex::SCHEDULE_SHIFT shift(const QList<QPair<int, int>> &intervals)
{
    orvex::SCHEDULE_SHIFT shift;
    for (const auto &[start, finish] : intervals)
        shift.times.append({-1, start, finish});
    return shift;
}

orvex::SCHEDULE_DAY workingDay(int shift)
{
    return {-1, shift, -1, false};
}

orvex::SCHEDULE_CALENDAR_DAY calendarDay(const QDate &date, quint32 shiftId, qint32 mode, qint64 revision)
{
    orvex::SCHEDULE_CALENDAR_DAY day;
    day.revision = revision;
    day.date = date;
    day.shiftId = shiftId;
    day.dayMode = mode;
    return day;
}

QString scheduleText(const orvex::SCHEDULE_DATA &schedule)
{
    const auto hours = [](int start, int finish) {
        return QStringLiteral("%1-%2").arg(double(start) / Hour).arg(double(finish) / Hour);
    };
    QStringList words{schedule.name + QLatin1Char(':')};
    for (const auto &day : schedule.days)
        words.append(day.dayOff == (day.shift >= 0) ? "?" : day.dayOff ? "-" : QString::number(day.shift));
    for (const auto &shift : schedule.shifts) {
        words.append("|");
        for (const auto &time : shift.times)
            words.append(hours(time.start, time.finish));
    }
    if (schedule.type == orvex::ScheduleFree)
        words += {hours(schedule.freeStart, schedule.freeFinish), hours(schedule.freeNorm, schedule.freeBreak)};
    return words.join(QLatin1Char(' '));
}

QMap<QDate, quint32> shiftsByDate(const QList<orvex::SCHEDULE_CALENDAR_DAY> &days)
{
    QMap<QDate, quint32> shifts;
    for (const auto &day : days)
        shifts.insert(day.date, day.shiftId);
    return shifts;
}

} // namespace support
