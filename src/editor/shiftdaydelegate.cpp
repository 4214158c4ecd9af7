#include "shiftdaydelegate.h"

namespace {

QString formatText(const QString &text, ShiftDayDelegate::ShowFormat format)
{
    if (!text.isEmpty())
        return text;
    return format == ShiftDayDelegate::ShowDateAndWeekday ? QStringLiteral("%1 (%2)") : QStringLiteral("%1");
}

} // namespace

ShiftDayDelegate::ShiftDayDelegate(QObject *parent)
    : ShiftDayDelegate({}, ShowDate, {}, parent)
{
}

ShiftDayDelegate::ShiftDayDelegate(const QDateTime &start, ShowFormat format, const QString &text, QObject *parent)
    : QStyledItemDelegate(parent)
    , start(start)
    , m_format(format)
    , m_text(formatText(text, format))
{
}

QWidget *ShiftDayDelegate::createEditor(QWidget *, const QStyleOptionViewItem &, const QModelIndex &) const
{
    return nullptr;
}

void ShiftDayDelegate::initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const
{
    QStyledItemDelegate::initStyleOption(option, index);
    option->text = dayText(index.row(), option->locale);
    option->features |= QStyleOptionViewItem::HasDisplay;
}

QString ShiftDayDelegate::dayText(int row, const QLocale &locale) const
{
    if (start.isNull())
        return QString::number(row + 1);
    const QDate date = start.date().addDays(row);
    const QString dateText = locale.toString(date, QLocale::ShortFormat);
    const QString weekday = locale.standaloneDayName(date.dayOfWeek(), QLocale::ShortFormat);
    switch (m_format) {
    case ShowDate:
        return m_text.arg(dateText);
    case ShowWeekday:
        return m_text.arg(weekday);
    case ShowDateAndWeekday:
        return m_text.arg(dateText, weekday);
    }
    return m_text.arg(row + 1);
}
