#pragma once

#include "tqwidgets_export.h"

#include <QStackedWidget>

class QToolBar;

/// Tool bars of which one is shown, such as one for each tab of a page.
class TQWIDGETS_EXPORT TQStackedToolBars : public QStackedWidget
{
    Q_OBJECT

public:
    explicit TQStackedToolBars(QWidget *parent = nullptr);

    /// Takes \a toolBar over and returns its index. The first one added is shown.
    int addToolBar(QToolBar *toolBar);
    /// Null for an index that there is not.
    [[nodiscard]] QToolBar *toolBar(int index) const;
};
