#pragma once

#include "clock.h"
#include "driver.h"
#include "openfile.h"
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
    /// Whether there is a file to connect to.
    [[nodiscard]] static Outcome checkFile(const StoreAddress &address);
    [[nodiscard]] Outcome connectTo(const StoreAddress &address, Access access);
    /// Whether somebody has written another file's bytes, or older ones of its own, into the open one, past the engine.
    [[nodiscard]] bool isOverwritten() const;
    /// Whether the log beside the connected file is that of another one, or begins after what the file holds.
    [[nodiscard]] bool hasForeignLog() const;
    void keepLogFromOtherFile();
    [[nodiscard]] Outcome checkIsStore();
    [[nodiscard]] Outcome readSchema(int &version);
    [[nodiscard]] Outcome checkIsNewest();
    [[nodiscard]] Outcome checkIsWritable();
    [[nodiscard]] QSqlError writeSchema(int version);
    [[nodiscard]] Outcome applySteps(int from);
    /// Writes one consistent state of the connected store into the empty file \a target.
    [[nodiscard]] Outcome copyTo(const QString &target);
    [[nodiscard]] Outcome switchToWal();
    [[nodiscard]] QSqlError writeOnTrial();
    [[nodiscard]] QSqlError numberFile();
    [[nodiscard]] QSqlError countWriting();
    void watchFile();
    void keepFromOthers() const;
    [[nodiscard]] QSqlError run(const QString &sql);
    [[nodiscard]] QSqlError setBusyTimeout(int milliseconds);
    /// The only value of a PRAGMA or a SELECT.
    [[nodiscard]] QSqlError readValue(const QString &sql, QVariant &value) const;
    [[nodiscard]] QSqlError readNumber(const QString &sql, int &value) const;
    /// The statement of the SQL file \a name.
    [[nodiscard]] QString statement(const char *name) const;

    QString m_path;
    QString m_realPath; ///< behind symbolic links: there the engine keeps its log
    QString m_login;
    QString m_connectionName;
    QSqlDatabase m_database;
    OpenFile m_file;
    bool m_keepsLog = false; ///< the connected file has been opened to be written
    bool m_writes = false; ///< the transaction that was begun last
    mutable quint32 m_numberInFile = 0; ///< the file's own, as it last lay in it: see `OpenFile::Header`
    std::unique_ptr<QSqlQuery> m_dataVersion;
    int m_lastDataVersion = 0;
};

} // namespace store
