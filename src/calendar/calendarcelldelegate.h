#pragma once

#include <QItemDelegate>

#include <memory>

class CalendarCellPictures;

/// Draws a day's cell: the background, a small text in the corner, the hours in the middle. The cells are square; their
/// size follows the font and a scale. Texts are readable on any background. Cells are never edited in place.
class CalendarCellDelegate : public QItemDelegate
{
    Q_OBJECT

public:
    ~CalendarCellDelegate() override;

    QWidget *createEditor(QWidget *parent, const QStyleOptionViewItem &option, const QModelIndex &index) const override;
    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override;
    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override;

public slots:
    /// Takes effect with the next question for the size.
    void setScale(int scale);

protected:
    CalendarCellDelegate(int scale, QObject *parent);

    /// What stands in the corner of a date's cell; empty: nothing.
    [[nodiscard]] virtual QString cornerText(const QDate &date) const = 0;

private:
    int m_scale;
    std::unique_ptr<CalendarCellPictures> m_pictures;
};
