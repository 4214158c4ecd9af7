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
    explicit HiddenPanel(QWidget *parent = nullptr);

    [[nodiscard]] QString title() const;
    void setTitle(const QString &title);
    /// Puts \a widget below those already there and takes it over.
    void addWidget(QWidget *widget);
    [[nodiscard]] bool isTitleBarVisible() const;
    void setTitleBarVisible(bool visible);

signals:
    void titleChanged(const QString &title);

private:
    QLabel *m_title = nullptr;
    QVBoxLayout *m_layout = nullptr;
};
