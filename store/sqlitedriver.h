#pragma once

#include "clock.h"
#include "driver.h"
#include "upgrade.h"

#include <QCoreApplication>
#include <QSqlQuery>

#include <memory>

namespace store {

/// The embedded engine: one file with a write-ahead log beside it.
class SqliteDriver final : public Driver
{
    Q_DECLARE_TR_FUNCTIONS(store::SqliteDriver)

public:
    SqliteDriver();
    ~SqliteDriver() override;

    /// See `Database`.
    [[nodiscard]] Outcome create(const StoreAddress &address);
    [[nodiscard]] Outcome backUp(const StoreAddress &address, const QString &target);
    [[nodiscard]] Outcome upgrade(const StoreAddress &address, const Clock &clock, Upgrade &done);

    [[nodiscard]] QString engine() const override;
    [[nodiscard]] Outcome open(const StoreAddress &address, Access access) override;
    void close() override;
    [[nodiscard]] QSqlDatabase database() const override { return m_database; }
    [[nodiscard]] bool isAlive() const override;
    [[nodiscard]] QSqlError begin(Transaction kind) override;
    [[nodiscard]] QSqlError commit() override;
    void rollback() override;
    [[nodiscard]] Outcome classify(const QSqlError &error) const override;
    [[nodiscard]] bool losesConnection(const QSqlError &error) const override;
    [[nodiscard]] Outcome findDamage(QStringList &damage) override;
    [[nodiscard]] bool somethingChanged() override;
    [[nodiscard]] QString login() const override { return m_login; }

private:
    /// Which file a path leads to.
    struct FileIdentity
    {
        quint64 device = 0;
        quint64 inode = 0;
        bool operator==(const FileIdentity &other) const { return device == other.device && inode == other.inode; }
    };
    static FileIdentity identityOf(const QString &path);

    [[nodiscard]] Outcome connectTo(const StoreAddress &address, Access access);
    [[nodiscard]] Outcome checkIsStore();
    [[nodiscard]] Outcome readSchema(int &version);
    [[nodiscard]] Outcome checkIsNewest();
    [[nodiscard]] Outcome checkIsWritable();
    [[nodiscard]] QSqlError writeSchema(int version);
    [[nodiscard]] Outcome applySteps(int from);
    /// Writes one consistent state of the connected store into the empty file \a target.
    [[nodiscard]] Outcome copyTo(const QString &target);
    [[nodiscard]] Outcome switchToWal();
    void keepFromOthers() const;
    [[nodiscard]] Outcome notAStore() const;
    [[nodiscard]] Outcome cannotOpen(const QSqlError &error) const;
    [[nodiscard]] QSqlError run(const QString &sql);
    [[nodiscard]] QSqlError setBusyTimeout(int milliseconds);
    /// The only value of a PRAGMA or a SELECT.
    [[nodiscard]] QSqlError readValue(const QString &sql, QVariant &value);
    [[nodiscard]] QSqlError readNumber(const QString &sql, int &value);
    /// The statement of the SQL file \a name.
    [[nodiscard]] QString statement(const char *name) const;

    QString m_path;
    QString m_login;
    QString m_connectionName;
    QSqlDatabase m_database;
    FileIdentity m_identity;
    std::unique_ptr<QSqlQuery> m_dataVersion;
    int m_lastDataVersion = 0;
};

} // namespace store
