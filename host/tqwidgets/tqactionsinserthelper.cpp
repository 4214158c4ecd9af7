#include "tqactionsinserthelper.h"

#include "tqstackedtoolbars.h"

void TQActionsInsertHelper::fillStackedWidget(TQStackedToolBars *stack, const QList<Page> &pages)
{
    for (const Page &page : pages) {
        auto *toolBar = new TQActionsToolBar(stack);
        toolBar->setGroups(page);
        stack->addToolBar(toolBar);
    }
}
