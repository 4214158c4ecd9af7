#include "tqactionstoolbar.h"

#include <QAction>

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
