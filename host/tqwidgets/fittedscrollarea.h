#pragma once

#include "tqwidgets_export.h"

#include <QScrollArea>

/// The middle of a window: as large as its contents, and scrolled only where the screen has no room for them.
///
/// So the buttons of a dialog stay in reach with a large font or on a small screen.
class TQWIDGETS_EXPORT FittedScrollArea : public QScrollArea
{
    Q_OBJECT

public:
    explicit FittedScrollArea(QWidget *parent = nullptr);

    /// Moves the layout of \a window, and with it all it holds, into an area that fills the window. Does nothing where
    /// there is no layout.
    static void wrapContents(QWidget *window);

    [[nodiscard]] QSize sizeHint() const override;
    /// That of the contents, unless they would leave too little of the screen for what stands around them.
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void showEvent(QShowEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void prepareContents();

    bool m_prepared = false;
};
