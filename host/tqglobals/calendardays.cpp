#include "calendardays.h"

#include "tqdatastream.h"

#include <tuple>

namespace orvex {

namespace {

auto members(const SCHEDULE_CALENDAR_DAY &day)
{
    return std::tie(day.revision, day.date, day.shiftId, day.dayMode, day.overlayMode, day.storedMode, day.intervals);
}

} // namespace

bool operator==(const SCHEDULE_CALENDAR_INTERVAL &a, const SCHEDULE_CALENDAR_INTERVAL &b)
{
    return a.start == b.start && a.finish == b.finish;
}

bool operator==(const SCHEDULE_CALENDAR_DAY &a, const SCHEDULE_CALENDAR_DAY &b)
{
    return members(a) == members(b);
}

bool hasSameContent(const SCHEDULE_CALENDAR_DAY &a, const SCHEDULE_CALENDAR_DAY &b)
{
    return a.shiftId == b.shiftId && a.dayMode == b.dayMode && a.intervals == b.intervals;
}

void SCHEDULE_CALENDAR_DAY::clear()
{
    shiftId = 0;
    dayMode = DayOff;
    overlayMode = -1;
    storedMode = DayOff;
    intervals.clear();
}

QDataStream &operator<<(QDataStream &stream, const SCHEDULE_CALENDAR_INTERVAL &interval)
{
    return stream << interval.start << interval.finish;
}

QDataStream &operator>>(QDataStream &stream, SCHEDULE_CALENDAR_INTERVAL &interval)
{
    return stream >> interval.start >> interval.finish;
}

QDataStream &operator<<(QDataStream &stream, const SCHEDULE_CALENDAR_DAY &day)
{
    return stream << day.revision << day.date << day.shiftId << day.dayMode << day.overlayMode << day.storedMode
                  << day.intervals;
}

QDataStream &operator>>(QDataStream &stream, SCHEDULE_CALENDAR_DAY &day)
{
    stream >> day.revision >> day.date >> day.shiftId >> day.dayMode >> day.overlayMode >> day.storedMode;
    tqstream::readList(stream, day.intervals);
    return stream;
}

} // namespace orvex
