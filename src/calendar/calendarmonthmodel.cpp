#include "calendarmonthmodel.h"

#include "scheduleutil.h"

#include <QLocale>

CalendarMonthModel::CalendarMonthModel(QObject *parent)
    : CalendarDaysModel(MondayColumn, QStringLiteral("red"), parent)
{
}

void CalendarMonthModel::setDate(const QDate &date)
{
    beginResetModel();
    setMonth(date);
    endResetModel();
}

void CalendarMonthModel::setCalendarDays(const QDate &date, const QList<orvex::SCHEDULE_CALENDAR_DAY> &days)
{
    beginResetModel();
    setMonth(date);
    replaceDays(days);
    endResetModel();
}

void CalendarMonthModel::setMonth(const QDate &date)
{
    m_year = date.year();
    m_month = date.month();
}

bool CalendarMonthModel::isInMonth(const QDate &date) const
{
    return date.isValid() && date.year() == m_year && date.month() == m_month;
}

QDate CalendarMonthModel::dateFromIndex(const QModelIndex &index) const
{
    const QDate first = firstDay();
    if (!index.isValid() || !first.isValid() || index.column() < MondayColumn || index.column() > SundayColumn)
        return {};
    const QDate monday = ScheduleUtil::mondayOf(first).addDays(index.row() * ScheduleUtil::DaysPerWeek);
    const QDate date = monday.addDays(index.column() - MondayColumn);
    return isInMonth(date) ? date : QDate();
}

QModelIndex CalendarMonthModel::dateToIndex(const QDate &date) const
{
    if (!isInMonth(date))
        return {};
    const int cell = firstDay().dayOfWeek() + date.day() - 2;
    return index(cell / ScheduleUtil::DaysPerWeek, cell % ScheduleUtil::DaysPerWeek + MondayColumn);
}

quint32 CalendarMonthModel::weekNormTotal(int row) const
{
    const QDate first = firstDay();
    if (!first.isValid())
        return 0;
    const QDate monday = ScheduleUtil::mondayOf(first).addDays(row * ScheduleUtil::DaysPerWeek);
    return dayList().normTotal(qMax(first, monday),
                               qMin(ScheduleUtil::lastOfMonth(first), monday.addDays(ScheduleUtil::DaysPerWeek - 1)));
}

int CalendarMonthModel::rowCount(const QModelIndex &parent) const
{
    const QDate first = firstDay();
    if (parent.isValid() || !first.isValid())
        return 0;
    return (first.dayOfWeek() - 1 + first.daysInMonth() + ScheduleUtil::DaysPerWeek - 1) / ScheduleUtil::DaysPerWeek;
}

int CalendarMonthModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant CalendarMonthModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole || section < TotalColumn || section > SundayColumn)
        return {};
    return section == TotalColumn ? tr("Итого") : QLocale().dayName(section, QLocale::ShortFormat);
}

QString CalendarMonthModel::rowText(int row, int) const
{
    return totalText(weekNormTotal(row));
}
