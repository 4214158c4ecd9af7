#pragma once

#include "tqwidgets_export.h"

#include <QString>
#include <QWidget>

class QLabel;
class QVBoxLayout;

/// A panel with a title bar over the widgets that a page puts into it.
class TQWIDGETS_EXPORT HiddenPanel : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(QString title READ title WRITE setTitle NOTIFY titleChanged)

public:
    /// Empty, with its title bar shown.
    explicit HiddenPanel(QWidget *parent = nullptr);

    /// Also what a screen reader calls the panel; plain text, empty at first.
    [[nodiscard]] QString title() const;
    /// Without effect for the same title.
    void setTitle(const QString &title);
    /// Puts \a widget below those already there and takes it over.
    void addWidget(QWidget *widget);
    /// Shown at first.
    [[nodiscard]] bool isTitleBarVisible() const;
    /// A hidden title bar takes no room; the title stays the panel's name.
    void setTitleBarVisible(bool visible);

signals:
    /// The title has become \a title.
    void titleChanged(const QString &title);

private:
    QLabel *m_title = nullptr;
    QVBoxLayout *m_layout = nullptr;
};
