#include "descriptionview.h"

#include <QAbstractTextDocumentLayout>
#include <QPaintEvent>
#include <QPainter>
#include <QScrollBar>
#include <QTextTable>

namespace {

/// The position of a table, its rows and its columns in the document, outer lines included.
class TableGeometry
{
public:
    explicit TableGeometry(QTextTable *table)
        : m_table(table)
        , m_layout(table->document()->documentLayout())
        , m_inset(table->format().cellSpacing() + table->format().cellPadding())
    {
    }

    /// Returns the start of the lines above and before a cell.
    [[nodiscard]] QPointF corner(int row, int column) const
    {
        const QTextBlock block = m_table->cellAt(row, column).firstCursorPosition().block();
        return m_layout->blockBoundingRect(block).topLeft() - QPointF(m_inset, m_inset);
    }
    // The layout gives the position of the first cell's text, not of the table.
    [[nodiscard]] QRectF rect() const { return {corner(0, 0), m_layout->frameBoundingRect(m_table).size()}; }
    [[nodiscard]] int rowAt(qreal y) const
    {
        const int position = m_layout->hitTest(QPointF(corner(0, 0).x() + m_inset, y), Qt::FuzzyHit);
        const QTextTableCell cell = m_table->cellAt(position);
        return cell.isValid() ? cell.row() : 0;
    }

private:
    QTextTable *const m_table;
    const QAbstractTextDocumentLayout *const m_layout;
    const qreal m_inset;
};

void drawLines(QPainter &painter, QTextTable *table, const QRectF &area)
{
    const TableGeometry geometry(table);
    const QRectF all = geometry.rect();
    const QRectF visible = all & area;
    if (visible.isEmpty())
        return;

    const QBrush brush = table->format().borderBrush();
    const qreal width = table->format().cellSpacing();
    const auto drawVertical = [&](qreal x) {
        painter.fillRect(QRectF(x, visible.y(), width, visible.height()), brush);
    };
    const auto drawHorizontal = [&](qreal y) {
        painter.fillRect(QRectF(visible.x(), y, visible.width(), width), brush);
    };

    for (int column = 0; column < table->columns(); ++column)
        drawVertical(geometry.corner(0, column).x());
    drawVertical(all.right() - width);
    for (int row = geometry.rowAt(visible.top()); row < table->rows(); ++row) {
        const qreal y = geometry.corner(row, 0).y();
        if (y > visible.bottom())
            return;
        drawHorizontal(y);
    }
    drawHorizontal(all.bottom() - width);
}

} // namespace

void DescriptionView::paintEvent(QPaintEvent *event)
{
    QTextEdit::paintEvent(event);
    const QPoint scrolled(horizontalScrollBar()->value(), verticalScrollBar()->value());
    QPainter painter(viewport());
    painter.translate(-scrolled);
    const QList<QTextFrame *> frames = document()->rootFrame()->childFrames();
    for (QTextFrame *frame : frames) {
        const auto table = qobject_cast<QTextTable *>(frame);
        if (table && table->format().borderStyle() == QTextFrameFormat::BorderStyle_Solid)
            drawLines(painter, table, event->rect().translated(scrolled));
    }
}
