#include "calendaryearmodel.h"

#include "scheduleutil.h"

#include <QLocale>

CalendarYearModel::CalendarYearModel(QObject *parent)
    : CalendarDaysModel(FirstDayColumn, QString(), parent)
{
}

void CalendarYearModel::setYear(int year)
{
    beginResetModel();
    m_year = year;
    endResetModel();
}

void CalendarYearModel::setCalendarDays(int year, const QList<orvex::SCHEDULE_CALENDAR_DAY> &days)
{
    beginResetModel();
    m_year = year;
    replaceDays(days);
    endResetModel();
}

void CalendarYearModel::setColor(const QString &color)
{
    CalendarDaysModel::setColor(color);
    updateDays();
}

QDate CalendarYearModel::dateFromIndex(const QModelIndex &index) const
{
    if (!index.isValid() || index.column() < FirstDayColumn || index.column() > LastDayColumn)
        return {};
    return QDate(m_year, index.row() + 1, index.column() - FirstDayColumn + 1);
}

QModelIndex CalendarYearModel::dateToIndex(const QDate &date) const
{
    if (!date.isValid() || date.year() != m_year)
        return {};
    return index(date.month() - 1, date.day() - 1 + FirstDayColumn);
}

quint32 CalendarYearModel::monthNormTotal(const QList<orvex::SCHEDULE_CALENDAR_DAY> &days, int year, int month)
{
    const QDate first(year, month, 1);
    const QDate last = ScheduleUtil::lastOfMonth(first);
    quint32 total = 0;
    for (const auto &day : days) {
        if (first.isValid() && day.date >= first && day.date <= last)
            total += quint32(dayNormTime(day));
    }
    return total;
}

quint32 CalendarYearModel::monthNormTotal(int year, int month) const
{
    const QDate first(year, month, 1);
    return first.isValid() ? dayList().normTotal(first, ScheduleUtil::lastOfMonth(first)) : 0;
}

int CalendarYearModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : ScheduleUtil::MonthsPerYear;
}

int CalendarYearModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant CalendarYearModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole || section < MonthColumn || section > LastDayColumn)
        return {};
    if (section == MonthColumn)
        return tr("Месяц");
    return section == TotalColumn ? tr("Итого") : QString::number(section - FirstDayColumn + 1);
}

QString CalendarYearModel::rowText(int row, int column) const
{
    if (column == MonthColumn)
        return QLocale().monthName(row + 1, QLocale::LongFormat);
    return totalText(monthNormTotal(m_year, row + 1));
}
