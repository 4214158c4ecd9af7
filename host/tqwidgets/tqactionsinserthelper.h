#pragma once

#include "tqactionstoolbar.h"
#include "tqwidgets_export.h"

#include <QList>

class TQStackedToolBars;

/// Builds tool bars from lists of actions.
class TQWIDGETS_EXPORT TQActionsInsertHelper
{
public:
    /// One tool bar: its groups, in order.
    using Page = QList<TQActionsToolBar::Group>;

    /// Adds one tool bar for each page to \a stack, in order. The actions stay their owners'.
    static void fillStackedWidget(TQStackedToolBars *stack, const QList<Page> &pages);
};
