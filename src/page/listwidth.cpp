#include "listwidth.h"

#include <QEvent>
#include <QSplitter>

namespace scheduleview {

ListWidth::ListWidth(QSplitter *splitter)
    : QObject(splitter)
    , m_splitter(splitter)
{
    splitter->installEventFilter(this);
}

bool ListWidth::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Resize || event->type() == QEvent::LayoutRequest)
        update();
    return QObject::eventFilter(watched, event);
}

void ListWidth::update()
{
    constexpr int ListCharacters = 56;
    const int others = m_splitter->widget(1)->minimumSizeHint().width() + m_splitter->handleWidth();
    const int wanted = ListCharacters * m_splitter->fontMetrics().averageCharWidth();
    m_splitter->widget(0)->setMinimumWidth(qBound(0, m_splitter->width() - others, wanted));
}

} // namespace scheduleview
