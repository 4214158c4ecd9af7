#pragma once

#include <QItemDelegate>

#include <memory>

class CalendarCellCache;

/// Draws a day's cell: the background, a small text in the corner, the hours in the middle. Cells are square, sized by
/// font and scale, and never edited in place.
class CalendarCellDelegate : public QItemDelegate
{
    Q_OBJECT

public:
    ~CalendarCellDelegate() override;

    QWidget *createEditor(QWidget *parent, const QStyleOptionViewItem &option, const QModelIndex &index) const override;
    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override;
    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override;

public slots:
    /// Takes effect with the next size query.
    void setScale(int scale);

protected:
    CalendarCellDelegate(int scale, QObject *parent);

    /// The text in the corner of a date's cell; may be empty.
    [[nodiscard]] virtual QString cornerText(const QDate &date) const = 0;

private:
    int m_scale;
    std::unique_ptr<CalendarCellCache> m_cells;
};
