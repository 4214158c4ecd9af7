#include "database.h"

#include "backupnames.h"
#include "databaseparts.h"
#include "dump.h"
#include "engines.h"
#include "newfile.h"

#include <QRegularExpression>

namespace store {

Database::Database(Clock clock, std::shared_ptr<const std::atomic_bool> stop)
    : m_clock(std::move(clock))
    , m_stop(std::move(stop))
{
}

Database::~Database() = default;

Outcome Database::create(const StoreAddress &address)
{
    return engines::newDriver(address)->create(address);
}

Outcome Database::upgrade(const StoreAddress &address, Upgrade &done, const Clock &clock)
{
    const auto prepareCopy = [&address, &clock](int version, QString &target) {
        target = backups::nameBeforeUpgrade(address, version, clock());
        return makeFolder(backups::folder(address));
    };
    return engines::newDriver(address)->upgrade(address, prepareCopy, done);
}

Outcome Database::backUp(const StoreAddress &address, const QString &target)
{
    return engines::newDriver(address)->copy(address, target);
}

Outcome Database::createFromDump(const StoreAddress &address, QIODevice &document)
{
    return engines::newDriver(address)->createFilled(address, [&document](const StoreAddress &unfinished) {
        Database database;
        Outcome opened = database.open(unfinished);
        return opened.ok() ? database.load(document) : opened;
    });
}

Outcome Database::open(const StoreAddress &address, Access access)
{
    close();
    auto parts = std::make_unique<Parts>(engines::newDriver(address), m_clock, m_stop, m_createdHere);
    Outcome outcome = parts->connection.open(address, access);
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

Outcome Database::check(QList<Fault> &faults)
{
    return m_parts ? StoreCheck(m_parts->connection).checkAll(faults) : Connection::notOpen();
}

Outcome Database::dump(QIODevice &document)
{
    return m_parts ? dump::write(m_parts->connection, document) : Connection::notOpen();
}

Outcome Database::load(QIODevice &document)
{
    return m_parts ? dump::read(m_parts->connection, document) : Connection::notOpen();
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
