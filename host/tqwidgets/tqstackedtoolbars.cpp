#include "tqstackedtoolbars.h"

#include <QToolBar>

TQStackedToolBars::TQStackedToolBars(QWidget *parent)
    : QStackedWidget(parent)
{
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
}

int TQStackedToolBars::addToolBar(QToolBar *toolBar)
{
    return addWidget(toolBar);
}

QToolBar *TQStackedToolBars::toolBar(int index) const
{
    return qobject_cast<QToolBar *>(widget(index));
}
