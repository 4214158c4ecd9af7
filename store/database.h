#pragma once

#include "clock.h"
#include "command.h"
#include "outcome.h"
#include "storagechange.h"
#include "storeaddress.h"
#include "storecheck.h"
#include "upgrade.h"

#include <QCoreApplication>
#include <QHash>
#include <QStringList>
#include <QUuid>

#include <atomic>
#include <memory>

class QIODevice;

namespace store {

class BulkWriter;

/// An open store, used directly: one connection, every call blocks until it is done. For the thread that opened it.
class Database
{
    Q_DECLARE_TR_FUNCTIONS(store::Database)

public:
    /// `snapshot` and `changes` fail soon after \a stop turns true.
    explicit Database(Clock clock = systemClock(), std::shared_ptr<const std::atomic_bool> stop = {});
    ~Database();
    Q_DISABLE_COPY(Database)

    /// Creates an empty store with the newest schema, readable by its owner alone, and every right granted. A missing
    /// folder is created; an existing file is refused and stays as it is.
    [[nodiscard]] static Outcome create(const StoreAddress &address);
    /// Brings an older store to the newest schema, one transaction per step, and keeps a copy of it as it was in its
    /// folder "backups". The newest one is left alone.
    [[nodiscard]] static Outcome upgrade(const StoreAddress &address, Upgrade &done,
                                         const Clock &clock = systemClock());
    /// Writes one consistent state of a store, whoever uses it meanwhile, into the new file \a target, readable by its
    /// owner alone: a store of its own, on the disk when this returns. A file that is there is refused.
    [[nodiscard]] static Outcome backUp(const StoreAddress &address, const QString &target);
    /// Creates a store out of what `dump` wrote, all or nothing: no file where the document is damaged or holds what a
    /// store must not hold. Client caches take it for another store than the dumped one.
    [[nodiscard]] static Outcome createFromDump(const StoreAddress &address, QIODevice &document);

    /// Opens an existing store of the newest schema; anything else is refused with a text that says what to do.
    [[nodiscard]] Outcome open(const StoreAddress &address, Access access = Access::Write);
    /// Closes the store; what needs one answers from then on that there is no connection.
    void close();
    /// Whether the store is open, undamaged as far as known, and still the file that was opened.
    [[nodiscard]] bool isOpen() const;

    /// Runs a request in one transaction and gives its answer. A writing request is done once per identifier: the same
    /// identifier again is answered from the log.
    [[nodiscard]] Command execute(const Command &request);

    /// Everything that the client caches, in one consistent state; later calls of `changes` continue from it.
    [[nodiscard]] Outcome snapshot(orvex::StorageChange &change);
    /// What was changed since the last call of `snapshot` or `changes`, by whomever; full where only that can be told.
    [[nodiscard]] Outcome changes(orvex::StorageChange &change);
    /// Whether another connection may have changed something since the last call. Cheap enough to poll.
    [[nodiscard]] bool somethingChanged();
    /// Shortens the store's own logs where they have grown long.
    [[nodiscard]] Outcome cutLogs();

    /// Adds what is wrong with the store to \a faults, each with its remedy. Fails only where nothing can be read.
    [[nodiscard]] Outcome check(QList<Fault> &faults);
    /// Writes everything in one consistent state as one JSON document (docs/dump.md).
    [[nodiscard]] Outcome dump(QIODevice &document);
    /// Reads such a document into this empty store, all or nothing.
    [[nodiscard]] Outcome load(QIODevice &document);

    /// The name under which this connection's changes are recorded.
    [[nodiscard]] QString login() const;
    /// The "RL_…" roles that the store grants this login right now.
    [[nodiscard]] Outcome roles(QStringList &roles);
    /// Grants or revokes a role for everybody who opens the store; granting a granted one changes nothing. A name that
    /// no role can have is refused. Takes effect in running clients within half a minute.
    [[nodiscard]] Outcome setRoleGranted(const QString &role, bool granted);

private:
    friend class BulkWriter;
    struct Parts;

    Clock m_clock;
    std::shared_ptr<const std::atomic_bool> m_stop;
    QHash<quint32, QUuid> m_createdHere; ///< outlasts a connection: see `CreatedSchedules`
    std::unique_ptr<Parts> m_parts;
};

} // namespace store
