#pragma once

#include "tqwidgets_export.h"

#include <QScrollArea>

/// A scroll area for the contents of a window: as large as the contents, scrolling only if they do not fit on the
/// screen.
///
/// It keeps the buttons of a dialog on the screen with a large font or on a small screen.
class TQWIDGETS_EXPORT FittedScrollArea : public QScrollArea
{
    Q_OBJECT

public:
    explicit FittedScrollArea(QWidget *parent = nullptr);

    /// Moves the layout of \a window with its widgets into a scroll area that fills the window. Does nothing without a
    /// layout.
    static void wrapContents(QWidget *window);

    [[nodiscard]] QSize sizeHint() const override;
    /// That of the contents, limited so that the rest of the window fits on the screen.
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void showEvent(QShowEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void prepareContents();

    bool m_prepared = false;
};
