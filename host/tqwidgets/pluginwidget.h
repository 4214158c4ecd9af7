#pragma once

#include "tqwidgets_export.h"

#include <QIcon>
#include <QList>
#include <QMainWindow>
#include <QString>

/// One tab of a plug-in's page in the client.
struct PLUGIN_TAB
{
    QString title;
    QIcon icon;
    int index = 0; ///< the argument of `onTabActivated`
    bool current = false; ///< whether the page shows it now
};

/// The page of a plug-in. The order of the virtual functions is part of the contract.
class TQWIDGETS_EXPORT PluginWidget : public QMainWindow
{
    Q_OBJECT

public:
    /// With a \a parent it is not a separate window.
    explicit PluginWidget(QWidget *parent = nullptr);
    ~PluginWidget() override;

    /// Whether the signed-in operator may see this page; true unless overridden. The client asks again after each
    /// change of the roles.
    [[nodiscard]] virtual bool canShow() const;
    /// The key of the help page; empty unless overridden.
    [[nodiscard]] virtual QString defaultHelpContext() const;
    /// Called each time the page becomes the current one.
    virtual void activated();
    /// Called when the operator selects the tab with this index.
    virtual void onTabActivated(int index);
    /// The page's tabs, in order; none unless overridden.
    [[nodiscard]] virtual QList<PLUGIN_TAB> tabList() const;
    /// Called once, after the page has been added to the client's window.
    virtual void insertedToInterface();

    /// Shows a pop-up above the page for \a timeout milliseconds; with 0 it stays until the operator closes it. It does
    /// not take the focus; several pop-ups are stacked.
    void showPopupCriticalMessage(const QString &text, int timeout);

signals:
    /// Asks the client for a pop-up, see `showPopupCriticalMessage`.
    void popupCriticalMessageRequested(const QString &text, int timeout);
};
