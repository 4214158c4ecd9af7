#include "scheduleutil.h"

#include "datanames.h"

#include <QVarLengthArray>

#include <algorithm>
#include <limits>

namespace {

constexpr qint64 Hour = ScheduleUtil::SecondsPerHour;
constexpr qint64 Day = ScheduleUtil::SecondsPerDay;
constexpr qint64 NightStart = 22 * Hour;
constexpr qint64 NightFinish = 6 * Hour;

/// An interval in seconds from the first midnight; more than 24 hours when it is on a later day. 64 bits are enough for
/// any number of consecutive intervals.
struct Span
{
    qint64 from = 0;
    qint64 to = 0;
};

using Spans = QVarLengthArray<Span, 8>;

qint32 bounded(qint64 seconds)
{
    return qint32(qBound<qint64>(0, seconds, std::numeric_limits<qint32>::max()));
}

void addSpan(Spans &spans, qint64 start, qint64 finish)
{
    start = qBound<qint64>(0, start, Day);
    finish = qBound<qint64>(0, finish, Day);
    if (start == 0 && finish == 0)
        return;
    spans.append({start, finish > start ? finish : finish + Day});
}

template <class Interval> Spans spansOf(const QList<Interval> &intervals)
{
    Spans spans;
    for (const auto &interval : intervals)
        addSpan(spans, interval.start, interval.finish);
    return spans;
}

/// In time order. If no interval crosses midnight, they are sorted by start; otherwise the order of the list decides
/// which of them are on the next day.
Spans inTimeOrder(Spans spans)
{
    const auto crosses = [](const Span &span) { return span.to > Day || (span.to == Day && span.from > 0); };
    if (std::none_of(spans.cbegin(), spans.cend(), crosses)) {
        std::sort(spans.begin(), spans.end(), [](const Span &a, const Span &b) { return a.from < b.from; });
        return spans;
    }
    for (int i = 1; i < spans.size(); ++i) {
        const qint64 overlap = spans.at(i - 1).to - spans.at(i).from;
        const qint64 offset = overlap > 0 ? (overlap + Day - 1) / Day * Day : 0;
        spans[i].from += offset;
        spans[i].to += offset;
    }
    return spans;
}

qint32 start(const Spans &spans)
{
    return spans.isEmpty() ? 0 : bounded(inTimeOrder(spans).at(0).from);
}

qint32 finish(const Spans &spans)
{
    if (spans.isEmpty())
        return 0;
    const Spans ordered = inTimeOrder(spans);
    const bool oneDay = ordered.last().to <= Day;
    const auto later = [](const Span &a, const Span &b) { return a.to < b.to; };
    const qint64 last = oneDay ? std::max_element(ordered.cbegin(), ordered.cend(), later)->to : ordered.last().to;
    return bounded(last > Day ? last % Day : last);
}

qint32 gaps(const Spans &spans)
{
    qint64 sum = 0;
    qint64 reached = 0; // an interval inside an earlier one makes no gap
    const Spans ordered = inTimeOrder(spans);
    for (const Span &span : ordered) {
        if (reached > 0)
            sum += qMax<qint64>(0, span.from - reached);
        reached = qMax(reached, span.to);
    }
    return bounded(sum);
}

qint32 norm(const Spans &spans)
{
    qint64 sum = 0;
    for (const Span &span : spans)
        sum += span.to - span.from;
    return bounded(sum);
}

qint32 night(const Spans &spans)
{
    const auto overlap = [](const Span &span, qint64 from, qint64 to) {
        return qMax<qint64>(0, qMin(span.to, to) - qMax(span.from, from));
    };
    qint64 sum = 0;
    for (const Span &span : spans) {
        sum += overlap(span, 0, NightFinish) + overlap(span, NightStart, Day + NightFinish)
            + overlap(span, Day + NightStart, 2 * Day + NightFinish);
    }
    return bounded(sum);
}

Spans guideSpans(quint32 shiftId, const orvex::ObjectHash *shifts, const orvex::ObjectHash *intervals)
{
    if (!shifts || !intervals)
        return {};
    const auto shift = shifts->constFind(shiftId);
    if (shift == shifts->constEnd())
        return {};
    // Called for hundreds of days with each repaint of a calendar, so it converts no names and builds no lists.
    static const QString idsName(db::param::INTERVALS);
    static const QString startName(db::param::START);
    static const QString finishName(db::param::FINISH);
    Spans spans;
    const QString ids = shift->parameter(idsName);
    for (int from = 0, to = 0; from < ids.size(); from = to + 1) {
        to = ids.indexOf(QLatin1Char(','), from);
        if (to < 0)
            to = ids.size();
        const auto interval = intervals->constFind(ids.midRef(from, to - from).toUInt());
        if (interval != intervals->constEnd())
            addSpan(spans, interval->parameter(startName).toInt(), interval->parameter(finishName).toInt());
    }
    return spans;
}

/// The worked intervals: none on a holiday, else the day's own, else those of its shift in the guide.
Spans workedSpans(const orvex::SCHEDULE_CALENDAR_DAY &day, const orvex::ObjectHash *shifts,
                  const orvex::ObjectHash *intervals)
{
    if (ScheduleUtil::isHoliday(day))
        return {};
    return day.intervals.isEmpty() ? guideSpans(day.shiftId, shifts, intervals) : spansOf(day.intervals);
}

} // namespace

qint32 ScheduleUtil::secondsOf(const QTime &time)
{
    return time.msecsSinceStartOfDay() / 1000;
}

QTime ScheduleUtil::timeOf(qint32 seconds)
{
    return QTime(0, 0).addSecs(seconds);
}

QDate ScheduleUtil::mondayOf(const QDate &date)
{
    return date.addDays(Qt::Monday - date.dayOfWeek());
}

QDate ScheduleUtil::lastOfMonth(const QDate &date)
{
    return date.addDays(date.daysInMonth() - date.day());
}

QDate ScheduleUtil::lastOfYear(const QDate &date)
{
    return date.addDays(date.daysInYear() - date.dayOfYear());
}

qint32 ScheduleUtil::startTime(const QList<orvex::SCHEDULE_SHIFT_TIME> &times)
{
    return start(spansOf(times));
}

qint32 ScheduleUtil::finishTime(const QList<orvex::SCHEDULE_SHIFT_TIME> &times)
{
    return finish(spansOf(times));
}

qint32 ScheduleUtil::breakTime(const QList<orvex::SCHEDULE_SHIFT_TIME> &times)
{
    return gaps(spansOf(times));
}

qint32 ScheduleUtil::normTime(const QList<orvex::SCHEDULE_SHIFT_TIME> &times)
{
    return norm(spansOf(times));
}

qint32 ScheduleUtil::nightTime(const QList<orvex::SCHEDULE_SHIFT_TIME> &times)
{
    return night(spansOf(times));
}

qint32 ScheduleUtil::dayNormTime(const orvex::SCHEDULE_CALENDAR_DAY &day, const orvex::ObjectHash *shifts,
                                 const orvex::ObjectHash *intervals)
{
    const qint32 full = norm(workedSpans(day, shifts, intervals));
    return day.dayMode == orvex::DayPreHoliday ? bounded(full - Hour) : full;
}

qint32 ScheduleUtil::dayBreakTime(const orvex::SCHEDULE_CALENDAR_DAY &day, const orvex::ObjectHash *shifts,
                                  const orvex::ObjectHash *intervals)
{
    return gaps(workedSpans(day, shifts, intervals));
}

qint32 ScheduleUtil::dayNightTime(const orvex::SCHEDULE_CALENDAR_DAY &day, const orvex::ObjectHash *shifts,
                                  const orvex::ObjectHash *intervals)
{
    return night(workedSpans(day, shifts, intervals));
}

qint32 ScheduleUtil::dayStartTime(const orvex::SCHEDULE_CALENDAR_DAY &day, const orvex::ObjectHash *shifts,
                                  const orvex::ObjectHash *intervals)
{
    return start(workedSpans(day, shifts, intervals));
}

qint32 ScheduleUtil::dayFinishTime(const orvex::SCHEDULE_CALENDAR_DAY &day, const orvex::ObjectHash *shifts,
                                   const orvex::ObjectHash *intervals)
{
    return finish(workedSpans(day, shifts, intervals));
}

bool ScheduleUtil::isHoliday(const orvex::SCHEDULE_CALENDAR_DAY &day)
{
    return day.dayMode == orvex::DayOff || day.dayMode == orvex::DayHoliday;
}
