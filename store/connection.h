#pragma once

#include "clock.h"
#include "driver.h"

#include <QCoreApplication>
#include <QDate>
#include <QHash>
#include <QSqlQuery>
#include <QVariant>

#include <atomic>
#include <functional>
#include <memory>

namespace store {

class Connection;

/// Set to true by another thread to interrupt long reads; null if this never happens.
using StopFlag = std::shared_ptr<const std::atomic_bool>;

/// One use of a prepared statement, finished by the destructor. The connection keeps a failure.
class Query
{
public:
    /// Made by `Connection::query`. \a connection must outlive the query.
    Query(Connection &connection, std::shared_ptr<QSqlQuery> query);
    ~Query();
    Q_DISABLE_COPY(Query)

    // A null string or byte array is stored as an empty one, a null date and the identifier 0 as NULL.

    Query &bind(const char *name, const QString &value);
    Query &bind(const char *name, const QByteArray &value);
    Query &bind(const char *name, qint64 value);
    Query &bindDate(const char *name, const QDate &value);
    Query &bindReference(const char *name, quint32 id);
    /// A list of identifiers for `{{id_list}}`.
    Query &bindIds(const QList<quint32> &ids);

    /// Runs the statement. Returns false at once after an earlier failure of the transaction.
    [[nodiscard]] bool exec();
    /// Moves to the next row. Returns false after the last row and after a failure: the caller checks
    /// `Connection::failed` before it relies on having read all rows.
    [[nodiscard]] bool next();
    /// Runs the statement and moves to the first row.
    [[nodiscard]] bool execFirst() { return exec() && next(); }
    /// The number of rows that a writing statement has changed.
    [[nodiscard]] int rowsAffected() const { return m_query->numRowsAffected(); }

    // Columns of the current row, from 0. NULL and values of another type are returned as 0 or empty.

    /// Whether the column is NULL.
    [[nodiscard]] bool isNull(int column) const { return m_query->isNull(column); }
    [[nodiscard]] QString text(int column) const { return m_query->value(column).toString(); }
    [[nodiscard]] QByteArray bytes(int column) const { return m_query->value(column).toByteArray(); }
    [[nodiscard]] qint32 number(int column) const { return m_query->value(column).toInt(); }
    [[nodiscard]] qint64 bigNumber(int column) const { return m_query->value(column).toLongLong(); }
    /// An identifier; 0 for NULL.
    [[nodiscard]] quint32 id(int column) const { return m_query->value(column).toUInt(); }
    /// A date stored as "yyyy-MM-dd"; null for NULL.
    [[nodiscard]] QDate date(int column) const;

private:
    Connection &m_connection;
    std::shared_ptr<QSqlQuery> m_query; ///< shared with the connection
};

/// A driver with its prepared statements. The first failure of a transaction is kept until the next transaction begins;
/// code in between need not check each statement, because the transaction is rolled back and ends with that failure.
class Connection
{
    Q_DECLARE_TR_FUNCTIONS(store::Connection)

public:
    /// Long reads fail soon after \a stop becomes true.
    Connection(std::unique_ptr<Driver> driver, Clock clock, StopFlag stop = {});
    ~Connection();
    Q_DISABLE_COPY(Connection)

    /// Opens a store, see `Driver::open`; an open one is closed first.
    [[nodiscard]] Outcome open(const StoreAddress &address, Access access);
    /// Discards the prepared statements and closes; no effect if it is closed.
    void close();
    /// The failure of any operation without an open store.
    [[nodiscard]] static Outcome notOpen();
    /// Whether only a new connection can help after the failure.
    [[nodiscard]] bool isLost() const { return m_lost; }
    /// The engine's driver; owned by the connection.
    [[nodiscard]] Driver &driver() const { return *m_driver; }
    /// The current time, in UTC.
    [[nodiscard]] QDateTime time() const { return m_clock(); }
    /// The current time in the store's text form.
    [[nodiscard]] QString now() const { return time().toString(Qt::ISODateWithMs); }

    /// The statement of the SQL file \a name, prepared once. Only one query of a name may be in use at a time.
    [[nodiscard]] Query query(const QByteArray &name);
    /// The statement \a sql that the caller has composed, prepared once under \a name.
    [[nodiscard]] Query query(const QByteArray &name, const QString &sql);

    /// Runs \a body in a transaction. Commits if it succeeds, otherwise rolls back.
    [[nodiscard]] Outcome transact(Transaction kind, const std::function<Outcome()> &body);
    /// Begins a transaction and clears the failure of the previous one.
    [[nodiscard]] Outcome begin(Transaction kind);
    /// Commits; after a failure rolls back and returns that failure.
    [[nodiscard]] Outcome commit();
    /// Abandons the transaction.
    void rollback();

    /// Whether the stop flag is set; this counts as a failure of the transaction. Called between the rows of a long
    /// read.
    [[nodiscard]] bool isInterrupted();
    /// Whether a statement of this transaction has failed.
    [[nodiscard]] bool failed() const { return !m_failure.ok(); }
    /// The first failure of the transaction, or success.
    [[nodiscard]] const Outcome &failure() const { return m_failure; }

private:
    friend class Query;
    void fail(const QSqlError &error);

    std::unique_ptr<Driver> m_driver;
    Clock m_clock;
    StopFlag m_stop;
    QHash<QByteArray, std::shared_ptr<QSqlQuery>> m_queries; ///< successfully prepared ones
    Outcome m_failure;
    bool m_open = false;
    bool m_lost = false;
};

} // namespace store
