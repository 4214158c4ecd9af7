#include "database.h"

#include "databaseparts.h"
#include "sqlitedriver.h"

#include <QRegularExpression>

namespace store {

Database::Database() = default;
Database::~Database() = default;

Outcome Database::create(const StoreAddress &address)
{
    return SqliteDriver().create(address);
}

Outcome Database::upgrade(const StoreAddress &address)
{
    return SqliteDriver().upgrade(address);
}

Outcome Database::open(const StoreAddress &address)
{
    close();
    auto parts = std::make_unique<Parts>(std::make_unique<SqliteDriver>());
    Outcome outcome = parts->connection.open(address);
    if (outcome.ok())
        m_parts = std::move(parts);
    return outcome;
}

void Database::close()
{
    m_parts.reset();
}

bool Database::isOpen() const
{
    return m_parts && !m_parts->connection.isLost() && m_parts->connection.driver().isAlive();
}

Command Database::execute(const Command &request)
{
    if (m_parts)
        return m_parts->executor.execute(request);
    return Connection::notOpen().replyTo(request);
}

Outcome Database::snapshot(orvex::StorageChange &change)
{
    return m_parts ? m_parts->feed.snapshot(change) : Connection::notOpen();
}

Outcome Database::changes(orvex::StorageChange &change)
{
    return m_parts ? m_parts->feed.next(change) : Connection::notOpen();
}

bool Database::somethingChanged()
{
    return m_parts && m_parts->connection.driver().somethingChanged();
}

Outcome Database::cutLogs()
{
    return m_parts ? m_parts->feed.cutLogs() : Connection::notOpen();
}

QString Database::login() const
{
    return m_parts ? m_parts->connection.driver().login() : QString();
}

Outcome Database::roles(QStringList &roles)
{
    roles.clear();
    return m_parts ? m_parts->executor.roles(roles) : Connection::notOpen();
}

Outcome Database::setRoleGranted(const QString &role, bool granted)
{
    static const QRegularExpression roleName(QStringLiteral("^RL(_[A-Z]+)+$"));
    if (!m_parts)
        return Connection::notOpen();
    if (!roleName.match(role).hasMatch()) {
        return {ResultInvalidData, tr("Права %1 не бывает.").arg(role),
                tr("Имя права начинается с RL_, например RL_SCHEDULE_UPDATE.")};
    }
    return m_parts->connection.transact(Transaction::Write, [&]() -> Outcome {
        Query change = m_parts->connection.query(granted ? "role_grant" : "role_revoke");
        return change.bind(":role", role).exec() ? Outcome() : m_parts->connection.failure();
    });
}

} // namespace store
