#include "calendardayitemdelegate.h"

#include <QDate>
#include <QLocale>

namespace {

constexpr int DefaultScale = 4;

} // namespace

CalendarDayItemDelegate::CalendarDayItemDelegate(QObject *parent)
    : CalendarCellDelegate(DefaultScale, parent)
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
