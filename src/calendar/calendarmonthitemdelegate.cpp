#include "calendarmonthitemdelegate.h"

#include <QDate>

namespace {

constexpr int Scale = 5;

} // namespace

CalendarMonthItemDelegate::CalendarMonthItemDelegate(QObject *parent)
    : CalendarCellDelegate(Scale, parent)
{
}

QString CalendarMonthItemDelegate::cornerText(const QDate &date) const
{
    return QString::number(date.day());
}
