#pragma once

#include <QDateTime>
#include <QStyledItemDelegate>

/// Draws the day of a cycle: its number, or its date and weekday counted from a reference date. Creates no editor.
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
    /// In \a text %1 is the date or weekday and, if both are shown, %2 the weekday; an empty text means "%1" or
    /// "%1 (%2)".
    ShiftDayDelegate(const QDateTime &start, ShowFormat format, const QString &text, QObject *parent);

    QWidget *createEditor(QWidget *parent, const QStyleOptionViewItem &option, const QModelIndex &index) const override;

    /// The first day, of which only the date is used; null: the days are numbered. The caller repaints the view.
    QDateTime start;

protected:
    void initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const override;

private:
    [[nodiscard]] QString dayText(int row, const QLocale &locale) const;

    ShowFormat m_format = ShowDate;
    QString m_text;
};
