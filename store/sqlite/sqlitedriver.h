#pragma once

#include "driver.h"
#include "openfile.h"

#include <QSqlQuery>

#include <memory>

namespace store {

/// The embedded engine: a store is one file with a write-ahead log beside it.
class SqliteDriver final : public Driver
{
    Q_DECLARE_TR_FUNCTIONS(store::SqliteDriver)

public:
    SqliteDriver();
    ~SqliteDriver() override;

    [[nodiscard]] QString engine() const override;
    [[nodiscard]] Outcome create(const StoreAddress &address) override;
    [[nodiscard]] Outcome createFilled(const StoreAddress &address, const Fill &fill) override;
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

protected:
    [[nodiscard]] Outcome connectTo(const StoreAddress &address, Access access) override;
    [[nodiscard]] Outcome finishOpening(Access access) override;
    [[nodiscard]] Outcome readSchema(int &version) override;
    [[nodiscard]] Outcome copyTo(const QString &target) override;

private:
    /// Connects to any file of the engine.
    [[nodiscard]] Outcome connectToFile(const StoreAddress &address, Access access);
    [[nodiscard]] Outcome openDatabase(bool isReadOnly);
    [[nodiscard]] static Outcome checkFile(const StoreAddress &address);
    [[nodiscard]] Outcome checkIsStore();
    [[nodiscard]] Outcome checkIsWritable();
    [[nodiscard]] QSqlError probeWritable();
    [[nodiscard]] Outcome switchToWal();
    /// Writes the log of the complete file \a unfinished into it. \a target is the file that an error names.
    [[nodiscard]] Outcome writeLogBack(const StoreAddress &unfinished, const StoreAddress &target);
    /// Whether the log beside the connected file belongs to another file, or begins after the state of this one.
    [[nodiscard]] bool hasForeignLog() const;
    /// Whether another program has written other contents, or an older copy, into the open file without the engine.
    [[nodiscard]] bool isOverwritten() const;
    /// Keeps the engine from applying this file's log to another file at the same path.
    void flushOrDiscardLog();
    void restrictPermissions() const;
    [[nodiscard]] QSqlError assignGeneration();
    [[nodiscard]] QSqlError incrementGeneration();
    void rememberHeader();
    [[nodiscard]] QSqlError setBusyTimeout(int milliseconds);
    /// The only value of a PRAGMA or a SELECT.
    [[nodiscard]] QSqlError readValue(const QString &sql, QVariant &value) const;
    [[nodiscard]] QSqlError readNumber(const QString &sql, int &value) const;

    QString m_path;
    QString m_realPath; ///< symbolic links resolved: the engine keeps its log there
    QString m_login;
    QString m_connectionName;
    QSqlDatabase m_database;
    OpenFile m_file;
    bool m_watchesHeader = false; ///< the connected file is open for writing
    bool m_writes = false; ///< the last transaction is a writing one
    mutable quint32 m_generationInFile = 0; ///< last one seen in the file, see `OpenFile::Header`
    std::unique_ptr<QSqlQuery> m_dataVersion;
    int m_lastDataVersion = 0;
};

} // namespace store
