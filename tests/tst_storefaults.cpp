#include "linkfixture.h"

#include "faultyio.h"
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

QString textOf(const Command &reply)
{
    QString text;
    QString advice;
    return readPayload(reply.payload(), text, advice) ? text + QLatin1Char(' ') + advice : QString();
}

int countOf(StoreFixture &fixture, const QString &name)
{
    orvex::StorageChange all;
    if (!fixture.database.open(fixture.address()).ok() || !fixture.database.snapshot(all).ok())
        qFatal("The store cannot be read");
    fixture.database.close();
    int count = 0;
    for (const auto &schedule : qAsConst(all.schedules))
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
        QTEST(textOf(refused), "expected");
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

    void shouldRunAnInterruptedRequestOnce_data()
    {
        QTest::addColumn<int>("error");
        QTest::newRow("disk fault") << EIO;
        QTest::newRow("full disk") << ENOSPC;
    }

    void shouldRunAnInterruptedRequestOnce()
    {
        QFETCH(int, error);
        StoreFixture fixture;
        fixture.database.close();
        LinkFixture client(fixture);
        int failed = 0;
        for (int good = 0; good < 14; ++good) {
            const QString name = QStringLiteral("график %1").arg(good);
            const Command command = addition(name);
            faultyio::fail(folderOf(fixture), error, good, 1);
            Command reply = client.send(command);
            failed += faultyio::failures();
            faultyio::reset();
            if (!reply.isSuccess()) {
                // A full disk does not end the connection: the operator is told and repeats the action.
                QCOMPARE(error, ENOSPC);
                reply = client.send(command);
            }
            QVERIFY2(reply.isSuccess(), qPrintable(textOf(reply)));
            QCOMPARE(countOf(fixture, name), 1);
        }
        QVERIFY2(failed >= 4, "too few requests were hit by a fault");
        QList<store::Fault> faults;
        QVERIFY(fixture.database.open(fixture.address()).ok() && fixture.database.check(faults).ok());
        QVERIFY(faults.isEmpty());
    }

    void shouldLeaveNoIncompleteFileOnAFullDisk()
    {
        StoreFixture fixture;
        QBuffer document;
        document.open(QIODevice::ReadWrite);
        QVERIFY(fixture.database.dump(document).ok());
        document.seek(0);
        QTemporaryDir full;
        faultyio::fail(full.path(), ENOSPC, 3, -1);
        const QString target = full.filePath(QStringLiteral("copy.db"));
        const auto copied = store::Database::backUp(fixture.address(), target);
        QCOMPARE(copied.code, int(ResultStorageError));
        QVERIFY2(copied.message().contains(QStringLiteral("Проверьте место на диске")), qPrintable(copied.message()));
        QCOMPARE(store::Database::createFromDump(store::StoreAddress::file(target), document).code,
                 int(ResultStorageError));
        QVERIFY(QDir(full.path()).isEmpty());
        faultyio::reset();
        QVERIFY(store::Database::backUp(fixture.address(), target).ok());
    }

    void shouldLoadADumpCompletelyOrNotAtAll()
    {
        StoreFixture fixture;
        QBuffer document;
        document.open(QIODevice::ReadWrite);
        QVERIFY(fixture.database.dump(document).ok());
        bool isLoaded = false;
        for (int successes = 0; !isLoaded; successes += 7) {
            QTemporaryDir full;
            const auto target = store::StoreAddress::file(full.filePath(QStringLiteral("loaded.db")));
            document.seek(0);
            faultyio::fail(full.path(), ENOSPC, successes, -1);
            isLoaded = store::Database::createFromDump(target, document).ok();
            faultyio::reset();
            QCOMPARE(QFile::exists(target.filePath()), isLoaded);
            if (isLoaded) {
                QBuffer loaded;
                loaded.open(QIODevice::WriteOnly);
                store::Database database;
                QVERIFY(database.open(target).ok());
                QVERIFY(database.dump(loaded).ok());
                QCOMPARE(loaded.data(), document.data());
            }
        }
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
        QSignalSpy failed(&link, &store::StoreLink::failed);
        QSignalSpy opened(&link, &store::StoreLink::opened);
        link.open(fixture.address());
        QVERIFY(failed.wait());
        const QString text = failed.at(0).at(0).toString();
        QVERIFY2(text.contains(QStringLiteral("только для чтения")), qPrintable(text));
        QVERIFY2(text.contains(QStringLiteral("Дайте право на запись")), qPrintable(text));
        // Reading operations succeed.
        QList<store::Fault> faults;
        store::Database reader;
        QVERIFY(reader.open(fixture.address(), store::Access::Read).ok() && reader.check(faults).ok());
        reader.close();
        QCOMPARE(QDir(folderOf(fixture)).entryList(QDir::Files).size(), 1);
        QVERIFY(QFile::setPermissions(fixture.path(), QFile::ReadOwner | QFile::WriteOwner));
        link.open(fixture.address());
        QVERIFY(opened.wait());
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
        QSignalSpy failed(&link, &store::StoreLink::failed);
        QSignalSpy opened(&link, &store::StoreLink::opened);
        link.open(fixture.address());
        QVERIFY(failed.wait(20000));
        const QString text = failed.at(0).at(0).toString();
        QVERIFY2(text.contains(QStringLiteral("занят другой программой")), qPrintable(text));
        QVERIFY2(text.contains(QStringLiteral("Закройте её")), qPrintable(text));
        other.reset();
        link.open(fixture.address());
        QVERIFY(opened.wait());
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
        QVERIFY2(textOf(refused).contains(QStringLiteral("Повторите действие позже")), qPrintable(textOf(refused)));
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
