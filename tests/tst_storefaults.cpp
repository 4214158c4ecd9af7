#include "linkfixture.h"

#include "faultyio.h"
#include "storefile.h"
#include "testcolumns.h"

#include <QBuffer>
#include <QDir>
#include <QFile>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QtTest>

#include <cerrno>
#include <memory>
#include <unistd.h>

using namespace support;

namespace {

constexpr uid_t Nobody = 65534;

QString folderOf(const StoreFixture &fixture)
{
    return QFileInfo(fixture.path()).path();
}

Command addition(const QString &name)
{
    return storeRequest(request::AddSchedule, newSchedule(name));
}

/// Opens the store of a fixture, which fails, and returns the reported text.
QString failureOfOpening(store::StoreLink &link, const StoreFixture &fixture)
{
    QSignalSpy failed(&link, &store::StoreLink::failed);
    link.open(fixture.address());
    return failed.wait(20000) ? failed.at(0).at(0).toString() : QString();
}

/// Whether the store of a fixture can be opened.
bool opens(store::StoreLink &link, const StoreFixture &fixture)
{
    QSignalSpy opened(&link, &store::StoreLink::opened);
    link.open(fixture.address());
    return opened.wait();
}

int countOf(const StoreFixture &fixture, const QString &name)
{
    int count = 0;
    for (const auto &schedule : snapshotOf(fixture.path()).schedules)
        count += schedule.name == name;
    return count;
}

/// Another program that has locked the store's file.
class OtherProgram
{
public:
    OtherProgram(const StoreFixture &fixture, const QStringList &statements)
    {
        auto database = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("other program"));
        database.setDatabaseName(fixture.path());
        database.open();
        for (const QString &statement : statements) {
            QSqlQuery query(database);
            if (!query.exec(statement))
                qFatal("%s: %s", qPrintable(statement), qPrintable(query.lastError().text()));
        }
    }
    ~OtherProgram() { QSqlDatabase::removeDatabase(QStringLiteral("other program")); }
    Q_DISABLE_COPY(OtherProgram)
};

} // namespace

/// Faults of the disk and locks of other programs: each is reported with advice, no acknowledged write is lost, and
/// requests succeed again when the cause is removed.
class StoreFaultsTest : public QObject
{
    Q_OBJECT

private slots:
    void cleanup() { faultyio::reset(); }

    void shouldContinueAfterADiskFault_data()
    {
        addColumns<int, QString, bool>({"error", "expected", "reads"});
        QTest::newRow("full disk") << ENOSPC
                                   << "На диске нет места для хранилища данных. Освободите место и повторите действие."
                                   << true;
        QTest::newRow("disk fault") << EIO
                                    << "Диск с хранилищем данных отвечает ошибкой. Проверьте диск и повторите действие."
                                    << false;
    }

    void shouldContinueAfterADiskFault()
    {
        QFETCH(int, error);
        QFETCH(bool, reads);
        StoreFixture fixture;
        fixture.database.close();
        LinkFixture client(fixture);
        QVERIFY(client.send(addition(QStringLiteral("до"))).isSuccess());
        faultyio::fail(folderOf(fixture), error, 0, -1);
        const Command command = addition(QStringLiteral("после"));
        const Command refused = client.send(command);
        QCOMPARE(refused.result(), int(ResultStorageError));
        QTEST(refusal(refused), "expected");
        const QDate date(2024, 2, 29);
        const auto calendar = storeRequest(request::GetScheduleCalendar, QList<qint32>{1}, date, date);
        QCOMPARE(client.send(calendar).isSuccess(), reads);
        QVERIFY(faultyio::failures() > 0);
        faultyio::reset();
        QTRY_VERIFY_WITH_TIMEOUT(client.isConnected(), 10000);
        QVERIFY(client.send(command).isSuccess());
        QCOMPARE(countOf(fixture, QStringLiteral("до")), 1);
        QCOMPARE(countOf(fixture, QStringLiteral("после")), 1);
    }

    void shouldRunAnInterruptedRequestOnce()
    {
        StoreFixture fixture;
        fixture.database.close();
        LinkFixture client(fixture);
        for (const int error : {EIO, ENOSPC}) {
            int failed = 0;
            for (int good = 0; good < 14; ++good) {
                const QString name = QStringLiteral("%1 %2").arg(error).arg(good);
                const Command command = addition(name);
                faultyio::fail(folderOf(fixture), error, good, 1);
                Command reply = client.send(command);
                failed += faultyio::failures();
                faultyio::reset();
                if (!reply.isSuccess()) {
                    // A full disk does not end the connection: the operator repeats the action.
                    QCOMPARE(error, ENOSPC);
                    reply = client.send(command);
                }
                QVERIFY2(reply.isSuccess(), qPrintable(refusal(reply)));
                QCOMPARE(countOf(fixture, name), 1);
            }
            QVERIFY2(failed >= 4, "too few requests were hit by a fault");
        }
        QCOMPARE(faultsOf(fixture.path()), QStringList());
    }

    void shouldWriteANewStoreCompletelyOrNotAtAll()
    {
        StoreFixture fixture;
        QByteArray document = dumpOf(fixture.path());
        int failures = 0;
        const auto write = [&](const store::StoreAddress &target, bool fromDump) {
            QBuffer buffer(&document);
            buffer.open(QIODevice::ReadOnly);
            return fromDump ? store::Database::createFromDump(target, buffer)
                            : store::Database::backUp(fixture.address(), target.filePath());
        };
        for (const bool fromDump : {false, true}) {
            for (int successes = 0;; successes += 7) {
                QTemporaryDir full;
                const auto target = store::StoreAddress::file(full.filePath(QStringLiteral("new.db")));
                faultyio::fail(full.path(), ENOSPC, successes, -1);
                const auto written = write(target, fromDump);
                faultyio::reset();
                if (written.ok()) {
                    QCOMPARE(dumpOf(target.filePath()), document);
                    break;
                }
                ++failures;
                QCOMPARE(written.code, int(ResultStorageError));
                QVERIFY2(fromDump || written.advice.contains("Проверьте место на диске"),
                         qPrintable(written.message()));
                QVERIFY(QDir(full.path()).isEmpty());
            }
        }
        QVERIFY(failures > 10);
    }

    void shouldReportAReadOnlyFile()
    {
        StoreFixture fixture;
        fixture.database.close();
        // Root may write to read-only files.
        const bool isRoot = geteuid() == 0;
        if (isRoot) {
            for (const QString &path : {folderOf(fixture), fixture.path()})
                QCOMPARE(chown(path.toLocal8Bit().constData(), Nobody, Nobody), 0);
            QCOMPARE(seteuid(Nobody), 0);
        }
        const auto restoreUser = qScopeGuard([isRoot] {
            if (isRoot && seteuid(0) != 0)
                qFatal("The user cannot be restored");
        });
        QVERIFY(QFile::setPermissions(fixture.path(), QFile::ReadOwner));
        store::StoreLink link;
        const QString text = failureOfOpening(link, fixture);
        QVERIFY2(text.contains("только для чтения") && text.contains("Дайте право на запись"), qPrintable(text));
        // Reading operations succeed.
        QCOMPARE(faultsOf(fixture.path()), QStringList());
        QCOMPARE(QDir(folderOf(fixture)).entryList(QDir::Files).size(), 1);
        QVERIFY(QFile::setPermissions(fixture.path(), QFile::ReadOwner | QFile::WriteOwner));
        QVERIFY(opens(link, fixture));
    }

    void shouldReportAFileLockedByAnotherProgram()
    {
        StoreFixture fixture;
        fixture.database.close();
        auto other = std::make_unique<OtherProgram>(
            fixture,
            QStringList{QStringLiteral("PRAGMA locking_mode = EXCLUSIVE"), QStringLiteral("BEGIN IMMEDIATE"),
                        QStringLiteral("UPDATE schema_version SET version = version"), QStringLiteral("COMMIT")});
        store::StoreLink link;
        const QString text = failureOfOpening(link, fixture);
        QVERIFY2(text.contains("занят другой программой") && text.contains("Закройте её"), qPrintable(text));
        other.reset();
        QVERIFY(opens(link, fixture));
    }

    void shouldContinueWhenTheOtherWriterEnds()
    {
        StoreFixture fixture;
        fixture.database.close();
        LinkFixture client(fixture);
        auto other = std::make_unique<OtherProgram>(fixture, QStringList{QStringLiteral("BEGIN IMMEDIATE")});
        const Command command = addition(QStringLiteral("график"));
        const Command refused = client.send(command);
        QCOMPARE(refused.result(), int(ResultNoConnection));
        QVERIFY2(refusal(refused).contains(QStringLiteral("Повторите действие позже")), qPrintable(refusal(refused)));
        QVERIFY(client.isConnected());
        other.reset();
        QVERIFY(client.send(command).isSuccess());
        QCOMPARE(countOf(fixture, QStringLiteral("график")), 1);
    }

    void shouldRejectADiskWithoutSharedMemory()
    {
        StoreFixture fixture;
        fixture.database.close();
        QTemporaryDir folder;
        const auto onNetwork = store::StoreAddress::file(folder.filePath(QStringLiteral("store.orvex")));
        faultyio::refuseSharedMemory();
        for (const auto &refused : {fixture.database.open(fixture.address()), store::Database::create(onNetwork)}) {
            QVERIFY2(refused.message().contains(QStringLiteral("Перенесите хранилище на диск этого компьютера")),
                     qPrintable(refused.message()));
        }
        QVERIFY(QDir(folder.path()).isEmpty());
        faultyio::reset();
        QVERIFY(fixture.database.open(fixture.address()).ok());
    }
};

QTEST_GUILESS_MAIN(StoreFaultsTest)

#include "tst_storefaults.moc"
