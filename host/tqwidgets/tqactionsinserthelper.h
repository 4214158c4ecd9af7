#pragma once

#include "tqactionstoolbar.h"
#include "tqwidgets_export.h"

#include <QList>

class TQStackedToolBars;

/// Builds tool bars from lists of actions.
class TQWIDGETS_EXPORT TQActionsInsertHelper
{
public:
    /// The groups of one tool bar, in order.
    using Page = QList<TQActionsToolBar::Group>;

    /// Adds one tool bar for each page to \a stack, in order. Does not take ownership of the actions.
    static void fillStackedWidget(TQStackedToolBars *stack, const QList<Page> &pages);
};
