#pragma once

#include "clock.h"
#include "command.h"
#include "storagechange.h"
#include "storeaddress.h"

#include <QObject>
#include <QStringList>
#include <QThread>

#include <atomic>
#include <memory>

namespace store {

/// The clock and the delays of the daily backup.
struct LinkTiming
{
    Clock clock = systemClock();
    int firstBackup = 60000; ///< ms after opening, so that it does not slow down the start
    int nextBackup = 600000; ///< ms until the next check whether a backup is due
};

/// The client's connection to a store. A worker thread runs every request as one transaction on one connection and
/// reads the change feed. Once a day the store is backed up (see backups.h) on another thread.
///
/// All signals are emitted on the thread of this object, and never during a call.
class StoreLink : public QObject
{
    Q_OBJECT

public:
    /// A link that is not open.
    explicit StoreLink(QObject *parent = nullptr, LinkTiming timing = {});
    /// Closes.
    ~StoreLink() override;

    /// Opens a store, with the result `opened` or `failed`. An open one is closed first.
    void open(const StoreAddress &address);
    /// Runs a request after those submitted before; `replied` delivers the reply with the request's identifier. Without
    /// a connection the reply has code 6. After `close()` there is no reply.
    void submit(const Command &request);
    /// Ends the worker thread. Waits for the running request, discards waiting requests and interrupts loading. A
    /// running backup continues.
    void close();

signals:
    /// The store is open. \a snapshot contains everything that the client caches.
    void opened(const orvex::StorageChange &snapshot, const QString &login, const QStringList &roles);
    /// The store cannot be opened, and there are no further attempts. \a text says what is wrong and what to do.
    void failed(const QString &text);
    /// The reply to a request; always before the `changed` that the request causes.
    void replied(const Command &reply);
    /// Something was changed, here or by another program. Full after a loss of the connection, or if the changes are
    /// not known in detail.
    void changed(const orvex::StorageChange &change);
    /// The granted roles have changed.
    void rolesChanged(const QStringList &roles);
    /// True right after `opened`, and after the `changed` that follows a loss of the connection. While it is false the
    /// worker tries to connect every second. If a request notices the loss and connects again before its reply, there
    /// is only a full `changed`.
    void connectedChanged(bool connected);
    /// Connecting again has failed; emitted once per reason. \a text says why and what to do.
    void connectionLost(const QString &text);
    /// The daily backup has failed; emitted once per reason. \a text says why and what to do.
    void backupFailed(const QString &text);

private:
    class Worker;

    LinkTiming m_timing;
    std::unique_ptr<QThread> m_thread;
    Worker *m_worker = nullptr; ///< on m_thread; destroyed when that finishes
    std::shared_ptr<std::atomic_bool> m_stop; ///< set when the worker must end
    std::unique_ptr<QObject> m_relay; ///< receives the worker's signals
};

} // namespace store
