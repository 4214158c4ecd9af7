#pragma once

#include "outcome.h"
#include "storeaddress.h"

#include <QSqlDatabase>
#include <QString>
#include <QStringList>

class QSqlError;

namespace store {

enum class Transaction
{
    Read, ///< sees one state of the store from its first query on
    Write, ///< waits for other writers at its begin, so that it never fails half-way for their sake
};

/// What differs between database engines, apart from the SQL files in the folder named after the engine.
/// One driver is one connection; it belongs to the thread that opened it.
class Driver
{
public:
    Driver() = default;
    virtual ~Driver();
    Q_DISABLE_COPY(Driver)

    /// The folder of the engine's own SQL files.
    [[nodiscard]] virtual QString engine() const = 0;

    /// Connects, and refuses what is not a store of the newest schema with a text that says what to do. A store that is
    /// opened to be read need not be writable and is not changed.
    [[nodiscard]] virtual Outcome open(const StoreAddress &address, Access access) = 0;
    /// Closes the connection; without effect on a closed one.
    virtual void close() = 0;
    /// For the statements of the engine-neutral part; invalid while closed.
    [[nodiscard]] virtual QSqlDatabase database() const = 0;
    /// Whether the store is still where it was opened.
    [[nodiscard]] virtual bool isAlive() const = 0;

    // The engine's own way; an invalid error is success.

    /// Begins a transaction; of a writing one the lock is held when this returns.
    [[nodiscard]] virtual QSqlError begin(Transaction kind) = 0;
    /// What was written is on the disk when this returns without an error.
    [[nodiscard]] virtual QSqlError commit() = 0;
    /// Gives up the transaction; the engine may have done so already.
    virtual void rollback() = 0;

    /// The result code, with its texts, that an error of the engine stands for.
    [[nodiscard]] virtual Outcome classify(const QSqlError &error) const = 0;
    /// Whether after this error only a new connection can help.
    [[nodiscard]] virtual bool losesConnection(const QSqlError &error) const = 0;

    /// What the engine itself finds wrong with the stored bytes, as it says it; nothing where all is well.
    [[nodiscard]] virtual Outcome findDamage(QStringList &damage) = 0;
    /// Whether another connection may have committed something since the last call.
    [[nodiscard]] virtual bool somethingChanged() = 0;
    /// The name under which changes of this connection are recorded.
    [[nodiscard]] virtual QString login() const = 0;
};

} // namespace store
