#pragma once

#include "tqwidgets_export.h"

#include <QStackedWidget>

class QToolBar;

/// A stack of tool bars of which one is visible, such as one for each tab of a page.
class TQWIDGETS_EXPORT TQStackedToolBars : public QStackedWidget
{
    Q_OBJECT

public:
    explicit TQStackedToolBars(QWidget *parent = nullptr);

    /// Takes ownership of \a toolBar and returns its index. The first one becomes the visible one.
    int addToolBar(QToolBar *toolBar);
    /// Null for an invalid index.
    [[nodiscard]] QToolBar *toolBar(int index) const;
};
