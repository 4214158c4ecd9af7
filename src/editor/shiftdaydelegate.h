#pragma once

#include <QDateTime>
#include <QStyledItemDelegate>

/// Draws the day of a cycle: its number, or its date and weekday counted from a reference date.
class ShiftDayDelegate final : public QStyledItemDelegate
{
    Q_OBJECT

public:
    enum ShowFormat : int
    {
        ShowDate = 0,
        ShowWeekday = 1,
        ShowDateAndWeekday = 2,
    };

    explicit ShiftDayDelegate(QObject *parent = nullptr);
    /// \a text takes the date or weekday as %1 and, when both are shown, the weekday as %2; an empty one stands for
    /// "%1" or "%1 (%2)".
    ShiftDayDelegate(const QDateTime &start, ShowFormat format, const QString &text, QObject *parent);

    /// Moment of the first day, of which only the date counts; while it is null the days are numbered. Who changes it
    /// has the view painted anew.
    QDateTime start;

protected:
    void initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const override;

private:
    [[nodiscard]] QString dayText(int row, const QLocale &locale) const;

    ShowFormat m_format = ShowDate;
    QString m_text;
};
