#include "tqactionstoolbar.h"

#include <QAction>
#include <QEvent>
#include <QLayout>

TQActionsToolBar::TQActionsToolBar(QWidget *parent)
    : QToolBar(parent)
{
    setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
    setMovable(false);
    setContextMenuPolicy(Qt::PreventContextMenu);
}

void TQActionsToolBar::setGroups(const QList<Group> &groups)
{
    clear();
    bool first = true;
    for (const Group &group : groups) {
        if (group.isEmpty())
            continue;
        if (!first)
            addSeparator();
        first = false;
        for (QAction *action : group) {
            addAction(action);
            widgetForAction(action)->setFocusPolicy(Qt::TabFocus);
        }
    }
}

bool TQActionsToolBar::event(QEvent *event)
{
    const bool done = QToolBar::event(event);
    // The base class does not move the button of the overflow menu when the tool bar becomes wider.
    if (event->type() == QEvent::LayoutRequest)
        layout()->setGeometry(contentsRect());
    return done;
}
