#pragma once

#include "tqwidgets_export.h"

#include <QList>
#include <QToolBar>

class QAction;

/// A tool bar of action groups: text under icons, separators between groups. Its buttons can be reached by keyboard.
class TQWIDGETS_EXPORT TQActionsToolBar : public QToolBar
{
    Q_OBJECT

public:
    /// Actions that belong together.
    using Group = QList<QAction *>;

    /// Empty, not movable, without a context menu.
    explicit TQActionsToolBar(QWidget *parent = nullptr);

    /// Replaces the contents with these groups. Does not take ownership of the actions.
    void setGroups(const QList<Group> &groups);

protected:
    bool event(QEvent *event) override;
};
