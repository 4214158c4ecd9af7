#include "connection.h"

#include "log.h"
#include "sqlfiles.h"

#include <QSqlError>

namespace store {

namespace {

/// Parses "yyyy-MM-dd"; `QDate::fromString` takes most of the time of a large load.
QDate dateFromText(const QString &text)
{
    if (text.size() != 10 || text.at(4) != QLatin1Char('-') || text.at(7) != QLatin1Char('-'))
        return QDate::fromString(text, Qt::ISODate);
    const auto digit = [&text](int i) { return text.at(i).unicode() - '0'; };
    const int year = digit(0) * 1000 + digit(1) * 100 + digit(2) * 10 + digit(3);
    return {year, digit(5) * 10 + digit(6), digit(8) * 10 + digit(9)};
}

} // namespace

Query::Query(Connection &connection, std::shared_ptr<QSqlQuery> query)
    : m_connection(connection)
    , m_query(std::move(query))
{
}

Query::~Query()
{
    // An unfinished SELECT holds its snapshot, and the engine has to keep everything written since.
    m_query->finish();
}

Query &Query::bind(const char *name, const QString &value)
{
    m_query->bindValue(QLatin1String(name), value.isNull() ? QLatin1String("") : value);
    return *this;
}

Query &Query::bind(const char *name, const QByteArray &value)
{
    m_query->bindValue(QLatin1String(name), value.isNull() ? QByteArray("") : value);
    return *this;
}

Query &Query::bind(const char *name, qint64 value)
{
    m_query->bindValue(QLatin1String(name), value);
    return *this;
}

Query &Query::bindDate(const char *name, const QDate &value)
{
    m_query->bindValue(QLatin1String(name), value);
    return *this;
}

Query &Query::bindReference(const char *name, quint32 id)
{
    m_query->bindValue(QLatin1String(name), id == 0 ? QVariant(QVariant::UInt) : QVariant(id));
    return *this;
}

Query &Query::bindIds(const QList<quint32> &ids)
{
    QString list = QStringLiteral("[");
    for (const quint32 id : ids) {
        if (list.size() > 1)
            list += QLatin1Char(',');
        list += QString::number(id);
    }
    return bind(":ids", list + QLatin1Char(']'));
}

bool Query::exec()
{
    if (m_connection.failed())
        return false;
    if (m_query->exec())
        return true;
    m_connection.fail(m_query->lastError());
    return false;
}

bool Query::next()
{
    if (m_query->next())
        return true;
    if (m_query->lastError().isValid())
        m_connection.fail(m_query->lastError());
    return false;
}

QDate Query::date(int column) const
{
    const QVariant value = m_query->value(column);
    if (value.isNull())
        return {};
    return value.type() == QVariant::Date ? value.toDate() : dateFromText(value.toString());
}

Connection::Connection(std::unique_ptr<Driver> driver, Clock clock, StopFlag stop)
    : m_driver(std::move(driver))
    , m_clock(std::move(clock))
    , m_stop(std::move(stop))
{
}

Connection::~Connection()
{
    close();
}

Outcome Connection::open(const StoreAddress &address, Access access)
{
    close();
    Outcome outcome = m_driver->open(address, access);
    m_open = outcome.ok();
    m_lost = false;
    m_failure = {};
    return outcome;
}

void Connection::close()
{
    m_queries.clear();
    m_driver->close();
    m_open = false;
}

Query Connection::query(const QByteArray &name)
{
    if (const auto prepared = m_queries.value(name))
        return {*this, prepared};
    return query(name, sqlfiles::statement(m_driver->engine(), QString::fromLatin1(name)));
}

Query Connection::query(const QByteArray &name, const QString &sql)
{
    if (const auto prepared = m_queries.value(name))
        return {*this, prepared};
    const auto query = std::make_shared<QSqlQuery>(m_driver->database());
    query->setForwardOnly(true);
    // A failure may be temporary: the next use tries again.
    if (query->prepare(sql))
        m_queries.insert(name, query);
    else
        fail(query->lastError());
    return {*this, query};
}

Outcome Connection::transact(Transaction kind, const std::function<Outcome()> &body)
{
    if (Outcome begun = begin(kind); !begun.ok())
        return begun;
    Outcome outcome = body();
    if (outcome.ok())
        return commit();
    rollback();
    return failed() ? m_failure : outcome;
}

Outcome Connection::begin(Transaction kind)
{
    m_failure = {};
    if (!m_open)
        return notOpen();
    if (const QSqlError error = m_driver->begin(kind); error.isValid())
        fail(error);
    return m_failure;
}

Outcome Connection::commit()
{
    if (!failed()) {
        if (const QSqlError error = m_driver->commit(); error.isValid())
            fail(error);
    }
    if (failed())
        m_driver->rollback();
    return m_failure;
}

void Connection::rollback()
{
    m_driver->rollback();
}

bool Connection::isInterrupted()
{
    if (!m_stop || !*m_stop)
        return false;
    if (!failed())
        m_failure = {ResultNoConnection, tr("Чтение хранилища данных прервано."), {}};
    return true;
}

Outcome Connection::notOpen()
{
    return {ResultNoConnection, tr("Нет связи с хранилищем данных."), {}};
}

void Connection::fail(const QSqlError &error)
{
    if (failed())
        return;
    m_failure = m_driver->classify(error);
    m_lost = m_driver->losesConnection(error);
    qCWarning(storeLog) << "database error" << error.nativeErrorCode() << error.databaseText();
}

} // namespace store
