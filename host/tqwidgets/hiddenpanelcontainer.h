#pragma once

#include "tqwidgets_export.h"

#include <QString>
#include <QWidget>

class HiddenPanel;
class QSplitter;
class QToolButton;

/// Holds a `HiddenPanel` at the right of a splitter, and a slim handle at its left edge that folds the panel away.
///
/// A layout (usually the form's) places the panel; the container keeps a margin free for the handle. Whether it is
/// folded and how wide it was is remembered in the settings under its object name and that of the page around it.
class TQWIDGETS_EXPORT HiddenPanelContainer : public QWidget
{
    Q_OBJECT

public:
    /// Open until the settings say otherwise, which are read when it is first shown.
    explicit HiddenPanelContainer(QWidget *parent = nullptr);

    /// Whether only the handle is shown.
    [[nodiscard]] bool isCollapsed() const;
    /// Folds or opens the panel and remembers it.
    void setCollapsed(bool collapsed);

signals:
    /// The panel has been folded or opened.
    void collapsedChanged(bool collapsed);

protected:
    bool event(QEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;

private:
    [[nodiscard]] HiddenPanel *panel() const;
    [[nodiscard]] QSplitter *splitter() const;
    [[nodiscard]] QString settingsKey(const QString &name) const;
    void fold(bool collapsed);
    void restore();
    void rememberWidth();
    void applyWidth(int width);
    void updateHandle();

    QToolButton *m_handle = nullptr;
    bool m_collapsed = false;
    bool m_restored = false;
    int m_width = 0; ///< of the open container, pixels; 0: never shown yet
};
