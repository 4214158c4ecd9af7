#pragma once

#include "tqwidgets_export.h"

#include <QString>
#include <QWidget>

class HiddenPanel;
class QSplitter;
class QToolButton;

/// Contains a `HiddenPanel` at the right of a splitter, and a narrow handle at the left edge that collapses the panel.
///
/// A layout (usually the form's) places the panel; the container keeps a margin free for the handle. The settings store
/// the collapsed state and the width under the object names of the container and of its page.
class TQWIDGETS_EXPORT HiddenPanelContainer : public QWidget
{
    Q_OBJECT

public:
    /// Expanded at first. The settings are read when the container is shown for the first time.
    explicit HiddenPanelContainer(QWidget *parent = nullptr);

    /// Whether only the handle is visible.
    [[nodiscard]] bool isCollapsed() const;
    /// Collapses or expands the panel and stores the state in the settings.
    void setCollapsed(bool collapsed);

signals:
    /// The panel has been collapsed or expanded.
    void collapsedChanged(bool collapsed);

protected:
    bool event(QEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;

private:
    /// The child that the form or the caller has added; null if there is none.
    [[nodiscard]] HiddenPanel *panel() const;
    [[nodiscard]] QSplitter *splitter() const;
    [[nodiscard]] QString settingsKey(const QString &name) const;
    void applyCollapsed(bool collapsed);
    void restore();
    void saveWidth();
    void applyWidth(int width);
    void updateHandle();

    QToolButton *m_handle = nullptr;
    bool m_collapsed = false;
    bool m_restored = false;
    int m_width = 0; ///< of the expanded container, in pixels; 0: not shown yet
};
