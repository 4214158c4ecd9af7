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

/// When a link does what nobody asks it for.
struct LinkSchedule
{
    Clock clock = systemClock();
    int firstBackup = 60000; ///< ms after opening: the start belongs to the operator
    int nextBackup = 600000; ///< ms until the next look whether the day's backup is due
};

/// The client's connection to a store: a handle on the GUI thread, and a worker thread behind it that runs every
/// request as one transaction on its one connection, and reads the change feed. Once a day it has the store backed up
/// (see backups.h), beside the requests.
///
/// All signals are emitted on the thread of this object and never from inside a call.
class StoreLink : public QObject
{
    Q_OBJECT

public:
    /// Not open.
    explicit StoreLink(QObject *parent = nullptr, LinkSchedule schedule = {});
    /// Closes.
    ~StoreLink() override;

    /// Opens a store; `opened` or `failed` tells how it went. An open one is closed before.
    void open(const StoreAddress &address);
    /// Runs a request behind those that were submitted before; `replied` carries its answer, with its identifier.
    /// Without a connection the answer is code 6. After `close()` there is no answer.
    void submit(const Command &request);
    /// Ends the worker. Waits for the running request; requests that wait are not run, loading is given up, and a
    /// backup that runs goes on by itself.
    void close();

signals:
    /// The store is open. \a snapshot is full and was built by the worker: taking it in costs no reading.
    void opened(const orvex::StorageChange &snapshot, const QString &login, const QStringList &roles);
    /// The store cannot be opened: whole sentences that say what is wrong and what to do. Nothing is tried again.
    void failed(const QString &text);
    /// The answer of a request; always before the `changed` that the request caused.
    void replied(const Command &reply);
    /// Something was changed, here or by another program. Full after a loss of the connection or where the feed cannot
    /// tell what changed.
    void changed(const orvex::StorageChange &change);
    /// The store grants other roles than before.
    void rolesChanged(const QStringList &roles);
    /// True right after `opened`, and after the `changed` that follows a loss of the connection. While it is false the
    /// worker tries to connect again every second. A loss that is mended before the answer of the request that met it
    /// shows by a full `changed` alone.
    void connectedChanged(bool connected);
    /// The connection could not be made again: whole sentences that say why and what to do. Once per reason.
    void connectionLost(const QString &text);
    /// The day's backup could not be made: whole sentences that say why and what to do. Once per reason.
    void backupFailed(const QString &text);

private:
    class Worker;

    LinkSchedule m_schedule;
    std::unique_ptr<QThread> m_thread;
    Worker *m_worker = nullptr; ///< lives on m_thread, goes with it
    std::shared_ptr<std::atomic_bool> m_stop; ///< tells the worker to run nothing more
    std::unique_ptr<QObject> m_relay; ///< receives the worker's signals
};

} // namespace store
