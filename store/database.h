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

/// A store with one connection. Every call blocks until it is complete. For use only on the thread that opened it.
class Database
{
    Q_DECLARE_TR_FUNCTIONS(store::Database)

public:
    /// `snapshot` and `changes` fail soon after \a stop becomes true.
    explicit Database(Clock clock = systemClock(), std::shared_ptr<const std::atomic_bool> stop = {});
    ~Database();
    Q_DISABLE_COPY(Database)

    /// Creates an empty store of the newest schema with every right granted, accessible to its owner alone. A missing
    /// folder is created; an existing file is an error and is not changed.
    [[nodiscard]] static Outcome create(const StoreAddress &address);
    /// Upgrades an older store to the newest schema, one transaction per step, after copying it to its folder
    /// "backups". A store of the newest schema is not changed.
    [[nodiscard]] static Outcome upgrade(const StoreAddress &address, Upgrade &done,
                                         const Clock &clock = systemClock());
    /// Writes one consistent state of a store, which may be in use, into the new file \a target. The copy is a store of
    /// its own, accessible to its owner alone, and on the disk when this returns. An existing file is an error.
    [[nodiscard]] static Outcome backUp(const StoreAddress &address, const QString &target);
    /// Creates a store from a document that `dump` wrote. Creates nothing if the document is damaged or breaks a rule
    /// of `check`. For clients it is another store than the dumped one. The folder must exist.
    [[nodiscard]] static Outcome createFromDump(const StoreAddress &address, QIODevice &document);

    /// Opens a store of the newest schema. Anything else fails with a text that says what to do.
    [[nodiscard]] Outcome open(const StoreAddress &address, Access access = Access::Write);
    /// Closes the store; operations on it then fail with "no connection".
    void close();
    /// Whether the store is open, not known to be damaged, and still the one that was opened.
    [[nodiscard]] bool isOpen() const;

    /// Runs a request in one transaction and returns its reply. A writing request runs once per identifier; if it is
    /// sent again, the reply is read from the log.
    [[nodiscard]] Command execute(const Command &request);

    /// Everything that the client caches, in one consistent state. `changes` continues from this state.
    [[nodiscard]] Outcome snapshot(orvex::StorageChange &change);
    /// The changes since the last call of `snapshot` or `changes`, by any program; full if they are not known in
    /// detail.
    [[nodiscard]] Outcome changes(orvex::StorageChange &change);
    /// Whether another connection may have changed something since the last call. Fast enough for polling.
    [[nodiscard]] bool somethingChanged();
    /// Shortens the store's logs if they have become long.
    [[nodiscard]] Outcome cutLogs();

    /// Adds the faults of the store to \a faults, each with its remedy. Fails only if nothing can be read.
    [[nodiscard]] Outcome check(QList<Fault> &faults);
    /// Writes one consistent state of everything as a JSON document (docs/dump.md).
    [[nodiscard]] Outcome dump(QIODevice &document);
    /// Reads such a document into this empty store, completely or not at all.
    [[nodiscard]] Outcome load(QIODevice &document);

    /// The name under which this connection's changes are recorded.
    [[nodiscard]] QString login() const;
    /// The "RL_…" roles that the store grants to this login now.
    [[nodiscard]] Outcome roles(QStringList &roles);
    /// Grants or revokes a role for every user of the store; granting twice has no effect. A name that is not a role's
    /// is an error. Running clients follow within half a minute.
    [[nodiscard]] Outcome setRoleGranted(const QString &role, bool granted);

private:
    friend class BulkWriter;
    struct Parts;

    Clock m_clock;
    std::shared_ptr<const std::atomic_bool> m_stop;
    QHash<quint32, QUuid> m_createdHere; ///< kept when the connection is lost, see `CreatedSchedules`
    std::unique_ptr<Parts> m_parts;
};

} // namespace store
