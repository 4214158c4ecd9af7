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

/// Set from another thread; null where nobody stops the work.
using StopFlag = std::shared_ptr<const std::atomic_bool>;

/// One use of a prepared statement, finished when it goes out of scope. A failure is kept by the connection.
class Query
{
public:
    /// Made by `Connection::query`; \a connection outlives it.
    Query(Connection &connection, std::shared_ptr<QSqlQuery> query);
    ~Query();
    Q_DISABLE_COPY(Query)

    /// A null string or byte array is stored as an empty one, a null date and the identifier 0 as NULL.
    Query &bind(const char *name, const QString &value);
    Query &bind(const char *name, const QByteArray &value);
    Query &bind(const char *name, qint64 value);
    Query &bindDate(const char *name, const QDate &value);
    Query &bindReference(const char *name, quint32 id);
    /// A list of identifiers for `{{id_list}}`.
    Query &bindIds(const QList<quint32> &ids);

    /// Runs the statement; false at once after an earlier failure of the transaction.
    [[nodiscard]] bool exec();
    /// False behind the last row and after a failure: who reads to the end asks the connection before using the whole.
    [[nodiscard]] bool next();
    /// Runs and goes to the first row.
    [[nodiscard]] bool execFirst() { return exec() && next(); }
    /// How many rows a writing statement has changed.
    [[nodiscard]] int rowsAffected() const { return m_query->numRowsAffected(); }

    // The present row's columns, from 0; NULL and what is no such value give 0 or empty.

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

/// A driver with its prepared statements. The first failure of a transaction is kept until the next one begins, so that
/// code in between may go on to its end: the transaction is rolled back and answers with that failure.
class Connection
{
    Q_DECLARE_TR_FUNCTIONS(store::Connection)

public:
    /// Long reading ends with a failure once \a stop turns true.
    Connection(std::unique_ptr<Driver> driver, Clock clock, StopFlag stop = {});
    ~Connection();
    Q_DISABLE_COPY(Connection)

    /// Opens a store by the driver, see `Driver::open`; one that is open is closed before.
    [[nodiscard]] Outcome open(const StoreAddress &address, Access access);
    /// Drops the prepared statements and closes. Without effect on a closed one.
    void close();
    /// What every operation without an open store ends with.
    [[nodiscard]] static Outcome notOpen();
    /// Whether a failure told that only a new connection can help.
    [[nodiscard]] bool isLost() const { return m_lost; }
    /// The engine, for what is not common to all; the connection's own.
    [[nodiscard]] Driver &driver() const { return *m_driver; }
    /// The present moment, in UTC.
    [[nodiscard]] QDateTime time() const { return m_clock(); }
    /// The same as the store writes it.
    [[nodiscard]] QString now() const { return time().toString(Qt::ISODateWithMs); }

    /// The statement of the SQL file \a name, prepared once. Not to be used twice at the same time.
    [[nodiscard]] Query query(const QByteArray &name);
    /// The statement \a sql, which the caller has put together; prepared once under \a name.
    [[nodiscard]] Query query(const QByteArray &name, const QString &sql);

    /// Runs \a body in a transaction and commits, unless it fails.
    [[nodiscard]] Outcome transact(Transaction kind, const std::function<Outcome()> &body);
    /// Begins a transaction and forgets the last one's failure.
    [[nodiscard]] Outcome begin(Transaction kind);
    /// Stores what the transaction did; rolls back, and gives the failure, where there was one.
    [[nodiscard]] Outcome commit();
    /// Gives the transaction up.
    void rollback();

    /// Asked between the rows of a long reading: false, with the failure kept, when it is to be given up.
    [[nodiscard]] bool mayGoOn();
    /// Whether this transaction has met a failure.
    [[nodiscard]] bool failed() const { return !m_failure.ok(); }
    /// Its first one; success without any.
    [[nodiscard]] const Outcome &failure() const { return m_failure; }

private:
    friend class Query;
    void fail(const QSqlError &error);

    std::unique_ptr<Driver> m_driver;
    Clock m_clock;
    StopFlag m_stop;
    QHash<QByteArray, std::shared_ptr<QSqlQuery>> m_queries; ///< those that could be prepared
    Outcome m_failure;
    bool m_open = false;
    bool m_lost = false;
};

} // namespace store
