#include "schedulefactory.h"

#include "calendarwizardpage.h"
#include "fixedwizardpage.h"
#include "freewizardpage.h"
#include "schedulenamewidget.h"
#include "scheduleutil.h"
#include "shiftwizardpage.h"
#include "tqglobals.h"

#include <QLocale>

#include <algorithm>

using orvex::SCHEDULE_DATA;
using orvex::SCHEDULE_DAY;
using orvex::SCHEDULE_SHIFT;
using orvex::SCHEDULE_SHIFT_TIME;

namespace {

SCHEDULE_DATA newSchedule(const ParametersWizardPage &page, orvex::ScheduleMode type, const QDate &startDate)
{
    SCHEDULE_DATA schedule;
    schedule.name = page.nameWidget()->name();
    schedule.type = type;
    schedule.startDate = startDate;
    schedule.color = page.nameWidget()->colorName();
    return schedule;
}

SCHEDULE_SHIFT_TIME interval(qint32 start, qint32 finish)
{
    SCHEDULE_SHIFT_TIME time;
    time.start = start;
    time.finish = finish;
    return time;
}

SCHEDULE_SHIFT shiftWith(qint32 begin, qint32 end)
{
    SCHEDULE_SHIFT shift;
    shift.times = {interval(begin, end)};
    return shift;
}

SCHEDULE_SHIFT shiftWith(qint32 begin, qint32 breakBegin, qint32 breakEnd, qint32 end)
{
    SCHEDULE_SHIFT shift;
    shift.times = {interval(begin, breakBegin), interval(breakEnd, end)};
    return shift;
}

SCHEDULE_DAY workingDay(int shift)
{
    SCHEDULE_DAY day;
    day.shift = shift;
    day.dayOff = false;
    return day;
}

SCHEDULE_SHIFT shiftOf(const FixedWizardPage &page)
{
    const qint32 begin = ScheduleUtil::secondsOf(page.shiftBeg());
    const qint32 end = ScheduleUtil::secondsOf(page.shiftEnd());
    if (!page.hasBreak())
        return shiftWith(begin, end);
    return shiftWith(begin, ScheduleUtil::secondsOf(page.breakBeg()), ScheduleUtil::secondsOf(page.breakEnd()), end);
}

SCHEDULE_SHIFT shiftOf(const ShiftWizardPage::Shift &day)
{
    if (day.breakBegin == day.breakEnd)
        return shiftWith(day.begin, day.end);
    return shiftWith(day.begin, day.breakBegin, day.breakEnd, day.end);
}

bool haveSameTimes(const SCHEDULE_SHIFT &a, const SCHEDULE_SHIFT &b)
{
    return std::equal(
        a.times.cbegin(), a.times.cend(), b.times.cbegin(), b.times.cend(),
        [](const auto &left, const auto &right) { return left.start == right.start && left.finish == right.finish; });
}

/// The position of the first shift with the times of \a shift; appends it if there is none.
int shiftIndex(const SCHEDULE_SHIFT &shift, QList<SCHEDULE_SHIFT> *shifts)
{
    const auto found = std::find_if(shifts->cbegin(), shifts->cend(),
                                    [&shift](const auto &other) { return haveSameTimes(shift, other); });
    if (found != shifts->cend())
        return int(std::distance(shifts->cbegin(), found));
    shifts->append(shift);
    return shifts->size() - 1;
}

} // namespace

namespace scheduleview {

SCHEDULE_DATA fixedSchedule(const FixedWizardPage &page, const QDate &today)
{
    SCHEDULE_DATA schedule = newSchedule(page, orvex::ScheduleFixed, ScheduleUtil::mondayOf(today));
    schedule.useHolidays = 1;
    schedule.shifts.append(shiftOf(page));
    if (page.isSubLastHour()) {
        schedule.shifts.append(schedule.shifts.first());
        schedule.shifts.last().times.last().finish -= ScheduleUtil::SecondsPerHour;
    }
    const QList<bool> workdays = page.workdays();
    const int shortened = page.isSubLastHour() ? workdays.lastIndexOf(true) : -1;
    for (int i = 0; i < workdays.size(); ++i)
        schedule.days.append(workdays.at(i) ? workingDay(i == shortened ? 1 : 0) : SCHEDULE_DAY());
    return schedule;
}

SCHEDULE_DATA shiftSchedule(const ShiftWizardPage &page)
{
    SCHEDULE_DATA schedule = newSchedule(page, orvex::ScheduleShift, page.dateStart());
    schedule.useHolidays = 1;
    for (const ShiftWizardPage::Shift &day : page.shifts())
        schedule.days.append(day.dayOff ? SCHEDULE_DAY() : workingDay(shiftIndex(shiftOf(day), &schedule.shifts)));
    return schedule;
}

SCHEDULE_DATA freeSchedule(const FreeWizardPage &page, const QDate &startDate)
{
    SCHEDULE_DATA schedule = newSchedule(page, orvex::ScheduleFree, startDate);
    schedule.useHolidays = 1;
    schedule.freeStart = page.freeStart();
    schedule.freeFinish = page.freeFinish();
    schedule.freeNorm = page.freeNorm();
    schedule.freeBreak = page.freeBreak();
    return schedule;
}

SCHEDULE_DATA calendarSchedule(const CalendarWizardPage &page)
{
    return newSchedule(page, orvex::ScheduleCalendar, QDate(page.year(), 1, 1));
}

SCHEDULE_DATA personalSchedule(const orvex::ObjectInfo &employee, const QDate &start, const QString &color)
{
    SCHEDULE_DATA schedule;
    // Nominative form: "август", not "августа".
    const QString month = QLocale().standaloneMonthName(start.month(), QLocale::LongFormat);
    schedule.name =
        QStringLiteral("%1 %2 %3").arg(TQGlobals::objectName(employee), month, QString::number(start.year()));
    schedule.type = orvex::SchedulePersonal;
    schedule.startDate = start;
    schedule.workerId = employee.id;
    schedule.color = color;
    return schedule;
}

} // namespace scheduleview
