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

/// The running client: ties the window, the switchboard, the cache and the store together and brings the plug-ins in.
class Client final : public QObject
{
    Q_OBJECT

public:
    explicit Client(const Options &options);
    ~Client() override;

    /// Shows the window and begins to open the store.
    void start();

    [[nodiscard]] MainWindow &window() { return m_window; }
    [[nodiscard]] TQServerInterface &server() { return m_server; }

signals:
    /// The store is open and every plug-in that could be loaded has its page in the window.
    void ready();
    /// The store could not be opened; the window says so.
    void openingFailed(const QString &text);

private:
    void connectLink();
    void openStore(const store::StoreAddress &address);
    void createStore(const store::StoreAddress &address);
    void storeOpened(const orvex::StorageChange &snapshot, const QString &login, const QStringList &roles);
    /// Shows the store that has been opened, and says that a lost one is there again.
    void storageSettled();
    void connectionChanged(bool connected);
    void tellConnection(bool connected);
    void connectionLost(const QString &reason);
    void loadPlugins();
    /// Gives the reason when the plug-in could not be brought in, else an empty text.
    [[nodiscard]] QString bringIn(const PluginLoader::Plugin &plugin);
    void nameFailure(const PluginLoader::Failure &failure);
    [[nodiscard]] QString emptyText() const;
    void showWanted();
    void requestFailed(const Command &reply);

    Options m_options;
    KeyRepeatGuard m_keyRepeatGuard;
    const QString m_sessionId;
    store::StoreAddress m_address;
    QList<PluginLoader::Plugin> m_plugins; ///< those that were brought in
    bool m_loaded = false;
    bool m_opening = false;
    bool m_isToBeShown = false; ///< opened, its contents are on their way into the cache
    bool m_connected = false; ///< as the link says
    bool m_lossTold = false; ///< since the connection was there last
    QPointer<Popup> m_loss; ///< the pop-up that told it, until it is closed
    std::unique_ptr<QThread> m_creation; ///< of a new store
    // In this order: the window with the pages goes first, then the link, and what they use last.
    TQServerInterface m_server;
    store::StoreLink m_link;
    MainWindow m_window;
};
