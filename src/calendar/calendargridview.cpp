#include "calendargridview.h"

#include "cellcolors.h"
#include "tqguiglobals.h"

#include <QContextMenuEvent>
#include <QHeaderView>
#include <QKeyEvent>
#include <QPainter>
#include <QPaintEvent>
#include <QStyleOption>

namespace {

/// Resizes sections only if changed contents need another width: totals change with every edit, their width rarely
/// does.
class CalendarHeader final : public QHeaderView
{
public:
    explicit CalendarHeader(QTableView *view)
        : QHeaderView(Qt::Horizontal, view)
        , m_view(view)
    {
        setSectionsClickable(true);
        setHighlightSections(true);
    }

protected:
    void dataChanged(const QModelIndex &topLeft, const QModelIndex &bottomRight, const QVector<int> &roles) override
    {
        for (int column = topLeft.column(); column <= bottomRight.column(); ++column) {
            if (needsAnotherWidth(column)) {
                QHeaderView::dataChanged(topLeft, bottomRight, roles);
                return;
            }
        }
    }

private:
    [[nodiscard]] bool needsAnotherWidth(int column) const
    {
        if (sectionResizeMode(column) != ResizeToContents)
            return false;
        const QAbstractItemView *view = m_view;
        return qMax(view->sizeHintForColumn(column), sectionSizeHint(column)) != sectionSize(column);
    }

    QTableView *const m_view;
};

/// The style's colour, except on a dark base, where styles draw invisible lines.
QColor lineColor(const QTableView &view, const QStyleOptionViewItem &option)
{
    if (cellcolors::isDark(option.palette.color(QPalette::Base)))
        return TQGuiGlobals::lineColor();
    return QColor(QRgb(view.style()->styleHint(QStyle::SH_Table_GridLineColor, &option, &view)));
}

} // namespace

CalendarGridView::CalendarGridView(QWidget *parent)
    : QTableView(parent)
{
    setHorizontalHeader(new CalendarHeader(this));
    // `showGrid` stays on, so that cells leave space for the lines.
    setGridStyle(Qt::NoPen);
}

void CalendarGridView::paintEvent(QPaintEvent *event)
{
    QTableView::paintEvent(event);
    if (!model() || !showGrid())
        return;
    const QColor color = lineColor(*this, viewOptions());
    const QSize area(horizontalHeader()->length(), verticalHeader()->length());
    const QPoint origin(-horizontalHeader()->offset(), -verticalHeader()->offset());
    const QRect cells(isRightToLeft() ? QPoint(viewport()->width() - area.width() - origin.x(), origin.y()) : origin,
                      area);
    const QRect dirty = event->region().boundingRect() & cells;
    QPainter painter(viewport());
    painter.setClipRegion(event->region());
    for (int row = 0; row < model()->rowCount(); ++row) {
        const int bottom = rowViewportPosition(row) + rowHeight(row) - 1;
        if (!isRowHidden(row) && bottom >= dirty.top() && bottom <= dirty.bottom())
            painter.fillRect(dirty.left(), bottom, dirty.width(), 1, color);
    }
    for (int column = 0; column < model()->columnCount(); ++column) {
        const int left = columnViewportPosition(column);
        const int line = isRightToLeft() ? left : left + columnWidth(column) - 1;
        if (!isColumnHidden(column) && line >= dirty.left() && line <= dirty.right())
            painter.fillRect(line, dirty.top(), 1, dirty.height(), color);
    }
}

bool CalendarGridView::event(QEvent *event)
{
    if (event->type() != QEvent::ContextMenu)
        return QTableView::event(event);
    if (static_cast<QContextMenuEvent *>(event)->reason() != QContextMenuEvent::Keyboard)
        return QTableView::event(event);
    requestMenuAtCurrent();
    return true;
}

void CalendarGridView::keyPressEvent(QKeyEvent *event)
{
    if (event->key() != Qt::Key_F10 || event->modifiers() != Qt::ShiftModifier) {
        QTableView::keyPressEvent(event);
        return;
    }
    requestMenuAtCurrent();
    event->accept();
}

void CalendarGridView::requestMenuAtCurrent()
{
    const QModelIndex current = currentIndex();
    if (current.isValid())
        scrollTo(current);
    emit customContextMenuRequested(current.isValid() ? visualRect(current).center() : viewport()->rect().center());
}
