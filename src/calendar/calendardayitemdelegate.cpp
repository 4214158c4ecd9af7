#include "calendardayitemdelegate.h"

#include <QDate>
#include <QLocale>

CalendarDayItemDelegate::CalendarDayItemDelegate(QObject *parent)
    : CalendarCellDelegate(4, parent)
{
}

void CalendarDayItemDelegate::setShowDow(bool show)
{
    m_showDow = show;
}

QString CalendarDayItemDelegate::cornerText(const QDate &date) const
{
    return m_showDow ? QLocale().dayName(date.dayOfWeek(), QLocale::ShortFormat) : QString();
}
