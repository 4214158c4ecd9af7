#pragma once

#include "tqwidgets_export.h"

#include <QIcon>
#include <QList>
#include <QMainWindow>
#include <QString>

/// One tab of a plug-in's page in the client.
struct PLUGIN_TAB
{
    QString title; ///< what a person reads
    QIcon icon; ///< beside it
    int index = 0; ///< what `onTabActivated` is called with
    bool current = false; ///< the one that is shown now
};

/// The page of a plug-in. The order of the virtual operations is part of the contract.
class TQWIDGETS_EXPORT PluginWidget : public QMainWindow
{
    Q_OBJECT

public:
    /// With a \a parent it is no window of its own.
    explicit PluginWidget(QWidget *parent = nullptr);
    ~PluginWidget() override;

    /// Whether the signed-in user may see this page; true unless overridden.
    [[nodiscard]] virtual bool canShow() const;
    /// Key of the help page; empty unless overridden.
    [[nodiscard]] virtual QString defaultHelpContext() const;
    /// Called each time the page has come to the front.
    virtual void activated();
    /// Called when the user picks the page's tab with this index.
    virtual void onTabActivated(int index);
    /// The page's tabs, in order; none unless overridden.
    [[nodiscard]] virtual QList<PLUGIN_TAB> tabList() const;
    /// Called once, after the page has been placed in the client's window.
    virtual void insertedToInterface();

    /// Shows a pop-up in the client, above the page, that takes no focus. It goes after \a timeout milliseconds; with 0
    /// it stays until the user dismisses it. Several stack.
    void showPopupCriticalMessage(const QString &text, int timeout);

signals:
    /// For the client: a pop-up is wanted, see `showPopupCriticalMessage`.
    void popupCriticalMessageRequested(const QString &text, int timeout);
};
