#include "schedules.h"

#include "scheduleutil.h"
#include "tqdatastream.h"

#include <tuple>

namespace orvex {

namespace {

auto members(const SCHEDULE_SHIFT_TIME &time)
{
    return std::tie(time.id, time.start, time.finish);
}

auto members(const SCHEDULE_SHIFT &shift)
{
    return std::tie(shift.id, shift.flags, shift.times);
}

auto members(const SCHEDULE_DAY &day)
{
    return std::tie(day.id, day.shift, day.shiftId, day.dayOff);
}

auto members(const SCHEDULE_DATA &schedule)
{
    return std::tie(schedule.id, schedule.version, schedule.name, schedule.state, schedule.type, schedule.color,
                    schedule.startDate, schedule.useHolidays, schedule.days, schedule.shifts, schedule.freeStart,
                    schedule.freeFinish, schedule.freeNorm, schedule.freeBreak, schedule.comment, schedule.workerId);
}

} // namespace

bool operator==(const SCHEDULE_SHIFT_TIME &a, const SCHEDULE_SHIFT_TIME &b)
{
    return members(a) == members(b);
}

bool operator==(const SCHEDULE_SHIFT &a, const SCHEDULE_SHIFT &b)
{
    return members(a) == members(b);
}

bool operator==(const SCHEDULE_DAY &a, const SCHEDULE_DAY &b)
{
    return members(a) == members(b);
}

bool operator==(const SCHEDULE_DATA &a, const SCHEDULE_DATA &b)
{
    return members(a) == members(b);
}

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
