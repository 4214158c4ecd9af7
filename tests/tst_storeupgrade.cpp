#include "backups.h"
#include "database.h"
#include "storefile.h"

#include <QDir>
#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

using store::Database;
using store::StoreAddress;

namespace {

int orvexctl(const QStringList &arguments, QString *errors = nullptr)
{
    QProcess process;
    process.start(QStringLiteral(ORVEXCTL), arguments);
    process.waitForFinished(60000);
    if (errors)
        *errors = QString::fromUtf8(process.readAllStandardError());
    return process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
}

} // namespace

/// This program knows one schema more than `orvexctl`, which makes the older stores for the tests.
class StoreUpgradeTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        m_path = m_folder->filePath(QStringLiteral("store.db"));
        QCOMPARE(orvexctl({QStringLiteral("init"), m_path}), 0);
        QCOMPARE(orvexctl({QStringLiteral("sample"), m_path}), 0);
    }

    void shouldUpgradeAndKeepACopy()
    {
        Database database;
        const auto refused = database.open(address());
        QVERIFY2(refused.advice.contains(QStringLiteral("orvexctl upgrade")), qPrintable(refused.message()));

        store::Upgrade upgrade;
        const QDateTime now(QDate(2024, 2, 29), QTime(23, 59, 58));
        const auto outcome = Database::upgrade(address(), upgrade, [now] { return now; });
        QVERIFY2(outcome.ok(), qPrintable(outcome.message()));
        QCOMPARE(upgrade.from, 1);
        QCOMPARE(upgrade.to, 2);
        QCOMPARE(upgrade.copy, m_folder->filePath(QStringLiteral("backups/store-schema-1-2024-02-29-235958.db")));

        QVERIFY(support::snapshotOf(m_path).schedules.size() > 14);
        // The older program can read the copy, but no longer the store.
        QString errors;
        QCOMPARE(orvexctl({QStringLiteral("check"), upgrade.copy}, &errors), 0);
        QCOMPARE(orvexctl({QStringLiteral("check"), m_path}, &errors), 1);
        QVERIFY2(errors.contains(QStringLiteral("Обновите программу.")), qPrintable(errors));

        upgrade = {};
        QVERIFY(Database::upgrade(address(), upgrade).ok());
        QVERIFY(upgrade.copy.isEmpty());
        QCOMPARE(upgrade.from, 2);
    }

    void shouldKeepTheOlderSchemaWhenAStepFails()
    {
        support::executeStatement(m_path, QStringLiteral("CREATE TABLE approval (id INTEGER)"));
        store::Upgrade upgrade;
        const auto outcome = Database::upgrade(address(), upgrade);
        QVERIFY(!outcome.ok() && !outcome.advice.isEmpty());
        QVERIFY(QFileInfo::exists(upgrade.copy));
        QCOMPARE(upgrade.to, 1);
        QVERIFY(!support::tryStatement(m_path, QStringLiteral("SELECT approved_by FROM schedule")).isEmpty());
        QCOMPARE(orvexctl({QStringLiteral("check"), m_path}), 0);
    }

    void shouldNotUpgradeWithoutACopy()
    {
        QFile file(store::backups::folder(address()));
        QVERIFY(file.open(QIODevice::WriteOnly));
        store::Upgrade upgrade;
        QCOMPARE(Database::upgrade(address(), upgrade).code, int(ResultStorageError));
        QCOMPARE(orvexctl({QStringLiteral("check"), m_path}), 0);
    }

private:
    [[nodiscard]] StoreAddress address() const { return StoreAddress::file(m_path); }

    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_path;
};

QTEST_GUILESS_MAIN(StoreUpgradeTest)

#include "tst_storeupgrade.moc"
