#pragma once

#include "keyrepeatguard.h"
#include "mainwindow.h"
#include "options.h"
#include "pluginloader.h"
#include "popupstack.h"
#include "storelink.h"
#include "tqserverinterface.h"

#include <QObject>
#include <QPointer>
#include <QThread>

#include <memory>

/// The running client: connects window, server interface, cache and store, and loads the plug-ins.
class Client final : public QObject
{
    Q_OBJECT

public:
    explicit Client(const Options &options);
    ~Client() override;

    /// Shows the window and starts to open the store.
    void start();

    [[nodiscard]] MainWindow &window() { return m_window; }
    [[nodiscard]] TQServerInterface &server() { return m_server; }

signals:
    /// The store is open and every plug-in that could be loaded has its page in the window.
    void ready();
    /// The store could not be opened; the window shows \a text.
    void openingFailed(const QString &text);

private:
    void connectLink();
    void openStore(const store::StoreAddress &address);
    void createStore(const store::StoreAddress &address);
    void storeOpened(const orvex::StorageChange &snapshot, const QString &login, const QStringList &roles);
    /// Shows the pages of a store that has just been opened, and reports a restored connection.
    void storageSettled();
    void connectionChanged(bool connected);
    void updateConnection(bool connected);
    void connectionLost(const QString &reason);
    void loadPlugins();
    [[nodiscard]] bool isInitialized(const QString &plugin) const;
    /// Returns why the plug-in could not be initialised; empty on success.
    [[nodiscard]] QString initPlugin(const PluginLoader::Plugin &plugin);
    void reportPluginFailure(const PluginLoader::Failure &failure);
    [[nodiscard]] QString noPagesText() const;
    void showRequestedPage();
    void requestFailed(const Command &reply);

    Options m_options;
    KeyRepeatGuard m_keyRepeatGuard;
    const QString m_sessionId;
    store::StoreAddress m_address;
    QList<PluginLoader::Plugin> m_plugins; ///< the initialised ones
    bool m_pluginsLoaded = false;
    bool m_opening = false;
    bool m_pagesPending = false; ///< the store is open, the cache is not filled yet
    bool m_connected = false; ///< as the link reports
    bool m_lossReported = false; ///< since the last time the connection worked
    QPointer<Popup> m_lossPopup; ///< null once it is closed
    std::unique_ptr<QThread> m_creation; ///< creates a new store
    // The order matters: the window with the pages is destroyed first, then the link, then what both use.
    TQServerInterface m_server;
    store::StoreLink m_link;
    MainWindow m_window;
};
