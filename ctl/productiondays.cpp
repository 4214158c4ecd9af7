#include "productiondays.h"

#include <QCoreApplication>

namespace {

struct Holiday
{
    int month;
    int day;
    const char *name;
};

constexpr Holiday holidays[] = {
    {1, 1, QT_TRANSLATE_NOOP("ProductionDays", "Новый год")},
    {1, 2, QT_TRANSLATE_NOOP("ProductionDays", "Новогодние каникулы")},
    {1, 3, QT_TRANSLATE_NOOP("ProductionDays", "Новогодние каникулы")},
    {1, 4, QT_TRANSLATE_NOOP("ProductionDays", "Новогодние каникулы")},
    {1, 5, QT_TRANSLATE_NOOP("ProductionDays", "Новогодние каникулы")},
    {1, 6, QT_TRANSLATE_NOOP("ProductionDays", "Новогодние каникулы")},
    {1, 7, QT_TRANSLATE_NOOP("ProductionDays", "Рождество Христово")},
    {1, 8, QT_TRANSLATE_NOOP("ProductionDays", "Новогодние каникулы")},
    {2, 23, QT_TRANSLATE_NOOP("ProductionDays", "День защитника Отечества")},
    {3, 8, QT_TRANSLATE_NOOP("ProductionDays", "Международный женский день")},
    {5, 1, QT_TRANSLATE_NOOP("ProductionDays", "Праздник Весны и Труда")},
    {5, 9, QT_TRANSLATE_NOOP("ProductionDays", "День Победы")},
    {6, 12, QT_TRANSLATE_NOOP("ProductionDays", "День России")},
    {11, 4, QT_TRANSLATE_NOOP("ProductionDays", "День народного единства")},
};

bool isHoliday(const QDate &date)
{
    for (const Holiday &holiday : holidays) {
        if (date.month() == holiday.month && date.day() == holiday.day)
            return true;
    }
    return false;
}

} // namespace

QList<store::ProductionDay> productionDays(int year)
{
    QList<store::ProductionDay> days;
    for (const Holiday &holiday : holidays) {
        days.append({QDate(year, holiday.month, holiday.day), orvex::DayHoliday,
                     QCoreApplication::translate("ProductionDays", holiday.name)});
    }
    const QString shorter = QCoreApplication::translate("ProductionDays", "Предпраздничный день");
    for (QDate date(year, 1, 1); date.year() == year; date = date.addDays(1)) {
        const bool working = date.dayOfWeek() <= Qt::Friday && !isHoliday(date);
        if (working && isHoliday(date.addDays(1)))
            days.append({date, orvex::DayPreHoliday, shorter});
    }
    return days;
}
