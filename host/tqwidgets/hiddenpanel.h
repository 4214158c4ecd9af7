#pragma once

#include "tqwidgets_export.h"

#include <QString>
#include <QWidget>

class QLabel;
class QVBoxLayout;

/// A panel with a title bar above its widgets.
class TQWIDGETS_EXPORT HiddenPanel : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(QString title READ title WRITE setTitle NOTIFY titleChanged)

public:
    /// Empty, with a visible title bar.
    explicit HiddenPanel(QWidget *parent = nullptr);

    /// Plain text, empty at first; also the accessible name.
    [[nodiscard]] QString title() const;
    /// Does nothing for the same title.
    void setTitle(const QString &title);
    /// Adds \a widget at the bottom and takes ownership.
    void addWidget(QWidget *widget);
    /// Shown at first.
    [[nodiscard]] bool isTitleBarVisible() const;
    /// A hidden title bar takes no space; the title stays the accessible name.
    void setTitleBarVisible(bool visible);

signals:
    /// The title has changed to \a title.
    void titleChanged(const QString &title);

private:
    QLabel *m_title = nullptr;
    QVBoxLayout *m_layout = nullptr;
};
