#include "calendarmonthitemdelegate.h"

#include <QDate>

CalendarMonthItemDelegate::CalendarMonthItemDelegate(QObject *parent)
    : CalendarCellDelegate(5, parent)
{
}

QString CalendarMonthItemDelegate::cornerText(const QDate &date) const
{
    return QString::number(date.day());
}
