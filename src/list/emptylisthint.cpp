#include "emptylisthint.h"

#include <QAbstractItemView>
#include <QEvent>
#include <QPainter>

namespace scheduleview {

EmptyListHint::EmptyListHint(QAbstractItemView *view)
    : QObject(view)
    , m_view(view)
{
    const auto model = view->model();
    connect(model, &QAbstractItemModel::rowsInserted, this, &EmptyListHint::update);
    connect(model, &QAbstractItemModel::rowsRemoved, this, &EmptyListHint::update);
    connect(model, &QAbstractItemModel::layoutChanged, this, &EmptyListHint::update);
    connect(model, &QAbstractItemModel::modelReset, this, &EmptyListHint::update);
    view->viewport()->installEventFilter(this);
}

void EmptyListHint::setText(const QString &text)
{
    if (text == m_text)
        return;
    m_text = text;
    update();
}

bool EmptyListHint::eventFilter(QObject *watched, QEvent *event)
{
    // Painted before the view, which draws nothing over it while it has no rows. The type is tested first: the view's
    // destructor sends other events when the view is no longer an item view.
    if (event->type() == QEvent::Paint && watched == m_view->viewport() && m_view->model()->rowCount() == 0)
        paint();
    return QObject::eventFilter(watched, event);
}

void EmptyListHint::update()
{
    const QString shownText = m_view->model()->rowCount() == 0 ? m_text : QString();
    if (shownText == m_view->accessibleDescription())
        return;
    m_view->setAccessibleDescription(shownText);
    m_view->viewport()->update();
}

void EmptyListHint::paint() const
{
    constexpr int Margin = 12;
    QPainter painter(m_view->viewport());
    painter.setPen(m_view->palette().color(QPalette::PlaceholderText));
    painter.drawText(m_view->viewport()->rect().adjusted(Margin, Margin, -Margin, -Margin),
                     Qt::AlignCenter | Qt::TextWordWrap, m_text);
}

} // namespace scheduleview
