#include "schedules.h"

#include "scheduleutil.h"
#include "tqdatastream.h"

namespace orvex {

qint32 SCHEDULE_SHIFT::start() const
{
    return ScheduleUtil::startTime(times);
}

qint32 SCHEDULE_SHIFT::finish() const
{
    return ScheduleUtil::finishTime(times);
}

qint32 SCHEDULE_SHIFT::break_time() const
{
    return ScheduleUtil::breakTime(times);
}

QDataStream &operator<<(QDataStream &stream, const SCHEDULE_SHIFT_TIME &time)
{
    return stream << time.id << time.start << time.finish;
}

QDataStream &operator>>(QDataStream &stream, SCHEDULE_SHIFT_TIME &time)
{
    return stream >> time.id >> time.start >> time.finish;
}

QDataStream &operator<<(QDataStream &stream, const SCHEDULE_SHIFT &shift)
{
    return stream << shift.id << shift.flags << shift.times;
}

QDataStream &operator>>(QDataStream &stream, SCHEDULE_SHIFT &shift)
{
    stream >> shift.id >> shift.flags;
    tqstream::readList(stream, shift.times);
    return stream;
}

QDataStream &operator<<(QDataStream &stream, const SCHEDULE_DAY &day)
{
    return stream << day.id << day.shift << day.shiftId << day.dayOff;
}

QDataStream &operator>>(QDataStream &stream, SCHEDULE_DAY &day)
{
    return stream >> day.id >> day.shift >> day.shiftId >> day.dayOff;
}

QDataStream &operator<<(QDataStream &stream, const SCHEDULE_DATA &schedule)
{
    return stream << schedule.id << schedule.name << schedule.state << qint32(schedule.type) << schedule.color
                  << schedule.startDate << schedule.useHolidays << schedule.days << schedule.shifts
                  << schedule.freeStart << schedule.freeFinish << schedule.freeNorm << schedule.freeBreak
                  << schedule.comment << schedule.workerId << schedule.version;
}

QDataStream &operator>>(QDataStream &stream, SCHEDULE_DATA &schedule)
{
    qint32 type = 0;
    stream >> schedule.id >> schedule.name >> schedule.state >> type >> schedule.color >> schedule.startDate
        >> schedule.useHolidays;
    schedule.type = ScheduleMode(type);
    tqstream::readList(stream, schedule.days);
    tqstream::readList(stream, schedule.shifts);
    return stream >> schedule.freeStart >> schedule.freeFinish >> schedule.freeNorm >> schedule.freeBreak
        >> schedule.comment >> schedule.workerId >> schedule.version;
}

} // namespace orvex
