#include "validation.h"

#include "scheduleutil.h"

#include <QRegularExpression>

#include <algorithm>
#include <initializer_list>

namespace store {

namespace {

bool isTime(qint32 seconds)
{
    return seconds >= 0 && seconds <= ScheduleUtil::SecondsPerDay;
}

bool areTimes(std::initializer_list<qint32> values)
{
    return std::all_of(values.begin(), values.end(), isTime);
}

/// A schedule may have no date; the store has years of four digits.
bool isStorable(const QDate &date)
{
    return date.isNull() || (date.isValid() && date.year() >= 1 && date.year() <= 9999);
}

bool isColor(const QString &text)
{
    static const QRegularExpression color(QStringLiteral("^#[0-9a-fA-F]{6}\\z"));
    return text.isEmpty() || color.match(text).hasMatch();
}

bool hasBadShiftTimes(const orvex::SCHEDULE_SHIFT &shift)
{
    return std::any_of(shift.times.cbegin(), shift.times.cend(), [](const auto &time) {
        return !areTimes({time.start, time.finish});
    });
}

} // namespace

QString Validation::fault(const orvex::SCHEDULE_DATA &schedule)
{
    if (schedule.name.trimmed().isEmpty())
        return tr("У графика работ нет названия.");
    if (schedule.type < orvex::ScheduleFixed || schedule.type > orvex::SchedulePersonal)
        return tr("Тип графика работ %1 неизвестен.").arg(schedule.type);
    if (!isColor(schedule.color))
        return tr("Цвет графика работ «%1» записан неверно.").arg(schedule.color);
    if (!isStorable(schedule.startDate))
        return tr("Дата начала графика работ записана неверно.");
    // The form accepts norms of up to 24 hours and 59 minutes.
    if (!areTimes({schedule.freeStart, schedule.freeFinish, schedule.freeBreak}) || schedule.freeNorm < 0
        || schedule.freeNorm >= ScheduleUtil::SecondsPerDay + ScheduleUtil::SecondsPerHour)
        return tr("Ограничения ненормированного графика выходят за пределы суток.");
    if (std::any_of(schedule.shifts.cbegin(), schedule.shifts.cend(), hasBadShiftTimes))
        return tr("Время смены выходит за пределы суток.");
    const auto hasNoSuchShift = [&schedule](const orvex::SCHEDULE_DAY &day) {
        return day.shift < -1 || day.shift >= schedule.shifts.size();
    };
    if (std::any_of(schedule.days.cbegin(), schedule.days.cend(), hasNoSuchShift))
        return tr("День графика работ ссылается на смену, которой в графике нет.");
    const auto isOffWithShift = [](const orvex::SCHEDULE_DAY &day) { return day.dayOff && day.shift != -1; };
    if (std::any_of(schedule.days.cbegin(), schedule.days.cend(), isOffWithShift))
        return tr("У выходного дня графика работ есть смена.");
    if (schedule.type != orvex::SchedulePersonal)
        return {};
    if (schedule.workerId == 0)
        return tr("У индивидуального графика не указан сотрудник.");
    if (schedule.startDate.isNull())
        return tr("У индивидуального графика не указан месяц.");
    return {};
}

QString Validation::fault(const orvex::SCHEDULE_CALENDAR_DAY &day)
{
    if (day.date.isNull() || !isStorable(day.date))
        return tr("У дня календаря нет правильной даты.");
    for (const qint32 mode : {day.dayMode, day.storedMode}) {
        if (mode < orvex::DayOff || mode > orvex::DayPreHoliday)
            return tr("Вид дня %1 неизвестен.").arg(mode);
    }
    const bool hasAppliedHoliday = day.overlayMode != -1 && day.dayMode == day.overlayMode;
    if (day.shiftId != 0 && (hasAppliedHoliday ? day.storedMode : day.dayMode) == orvex::DayOff) {
        return tr("У выходного дня %1 есть смена.").arg(day.date.toString(QStringLiteral("dd.MM.yyyy")));
    }
    const auto isBad = [](const auto &interval) { return !areTimes({interval.start, interval.finish}); };
    if (std::any_of(day.intervals.cbegin(), day.intervals.cend(), isBad))
        return tr("Время дня %1 выходит за пределы суток.").arg(day.date.toString(QStringLiteral("dd.MM.yyyy")));
    return {};
}

} // namespace store
