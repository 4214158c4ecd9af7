#pragma once

#include "outcome.h"
#include "storeaddress.h"
#include "upgrade.h"

#include <QCoreApplication>
#include <QSqlDatabase>
#include <QString>
#include <QStringList>

#include <functional>

class QSqlError;

namespace store {

enum class Transaction
{
    Read, ///< sees one state of the store from its first query on
    Write, ///< waits for other writers when it begins, so that it cannot fail later because of them
};

/// What differs between database engines, apart from the SQL files in the folder named after the engine.
/// A driver is one connection and belongs to the thread that opened it.
class Driver
{
    Q_DECLARE_TR_FUNCTIONS(store::Driver)

public:
    /// Fills a new store, which can be opened at \a unfinished until it is complete.
    using Fill = std::function<Outcome(const StoreAddress &unfinished)>;
    /// Chooses the file \a target for the copy of a store of the schema \a version, and makes its folder.
    using PrepareCopy = std::function<Outcome(int version, QString &target)>;

    Driver() = default;
    virtual ~Driver();
    Q_DISABLE_COPY(Driver)

    /// The folder of the engine's own SQL files.
    [[nodiscard]] virtual QString engine() const = 0;

    // Operations on a store as a whole. They connect and close by themselves.

    /// See `Database::create`.
    [[nodiscard]] virtual Outcome create(const StoreAddress &address) = 0;
    /// Creates a store and calls \a fill; nothing remains at \a address if that fails. A missing folder is an error.
    [[nodiscard]] virtual Outcome createFilled(const StoreAddress &address, const Fill &fill) = 0;
    /// See `Database::backUp`.
    [[nodiscard]] Outcome copy(const StoreAddress &address, const QString &target);
    /// Upgrades an older store to the newest schema, after copying it to the file that \a prepareCopy chooses.
    [[nodiscard]] Outcome upgrade(const StoreAddress &address, const PrepareCopy &prepareCopy, Upgrade &done);

    /// Connects. Anything but a store of the newest schema is refused with a text that says what to do. With
    /// `Access::Read` the store need not be writable and is not changed.
    [[nodiscard]] Outcome open(const StoreAddress &address, Access access);
    /// Closes the connection; no effect if it is closed.
    virtual void close() = 0;
    /// For the engine-neutral statements; invalid while closed.
    [[nodiscard]] virtual QSqlDatabase database() const = 0;
    /// Whether the store is still the one that was opened.
    [[nodiscard]] virtual bool isAlive() const = 0;

    // For these an invalid error means success.

    /// Begins a transaction. A writing one holds the lock when this returns.
    [[nodiscard]] virtual QSqlError begin(Transaction kind) = 0;
    /// The changes are on the disk when this returns without an error.
    [[nodiscard]] virtual QSqlError commit() = 0;
    /// Abandons the transaction; the engine may have done so already.
    virtual void rollback() = 0;

    /// The result code and the texts for an error of the engine.
    [[nodiscard]] virtual Outcome classify(const QSqlError &error) const = 0;
    /// Whether only a new connection can help after this error.
    [[nodiscard]] virtual bool losesConnection(const QSqlError &error) const = 0;

    /// Adds the faults that the engine finds in the stored bytes, as the engine describes them.
    [[nodiscard]] virtual Outcome findDamage(QStringList &damage) = 0;
    /// Whether another connection may have committed something since the last call.
    [[nodiscard]] virtual bool somethingChanged() = 0;
    /// The name under which changes of this connection are recorded.
    [[nodiscard]] virtual QString login() const = 0;

protected:
    /// Connects to a store of any schema; anything else is refused and not changed.
    [[nodiscard]] virtual Outcome connectTo(const StoreAddress &address, Access access) = 0;
    /// Prepares the connected store of the newest schema for requests.
    [[nodiscard]] virtual Outcome finishOpening(Access access) = 0;
    /// Reads the schema number of the connected store.
    [[nodiscard]] virtual Outcome readSchema(int &version) = 0;
    /// Writes one consistent state of the connected store into the new file \a target.
    [[nodiscard]] virtual Outcome copyTo(const QString &target) = 0;

    /// Runs the schema steps after \a from, each in a transaction. \a address is for the error text.
    [[nodiscard]] Outcome applySteps(const StoreAddress &address, int from);
    /// Runs a statement that returns no rows.
    [[nodiscard]] QSqlError run(const QString &sql);
    /// The text of the SQL file \a name.
    [[nodiscard]] QString statement(const char *name) const;

private:
    [[nodiscard]] Outcome upgradeConnected(const StoreAddress &address, const PrepareCopy &prepareCopy, Upgrade &done);
    [[nodiscard]] Outcome checkIsNewest(const StoreAddress &address);
    [[nodiscard]] QSqlError applyStep(int version);
    [[nodiscard]] QSqlError writeSchema(int version);
};

} // namespace store
