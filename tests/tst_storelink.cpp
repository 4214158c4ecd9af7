#include "linkfixture.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QDir>
#include <QProcess>
#include <QThread>

#include <atomic>

#include <unistd.h>

namespace {

/// The part of the second process: renames every schedule of a store.
int renameAll(const QString &path, const QString &name)
{
    store::Database database;
    orvex::StorageChange all;
    if (!database.open(store::StoreAddress::file(path)).ok() || !database.snapshot(all).ok())
        return 1;
    for (auto record : qAsConst(all.schedules)) {
        record.name = name;
        if (!database.execute(StoreFixture::request(request::UpdateSchedule, record)).isSuccess())
            return 1;
    }
    return 0;
}

QByteArray contents(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void write(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        qFatal("%s cannot be written", qPrintable(path));
}

/// What is left where a client was killed and a backup, or an older copy, put in the place of its file alone.
QString putCopyBesideAnotherLog(StoreFixture &fixture, bool isBackup)
{
    const QString copy = fixture.path() + QStringLiteral(".copy");
    if (isBackup && !store::Database::backUp(fixture.address(), copy).ok())
        qFatal("There is no backup");
    fixture.sql(QStringLiteral("PRAGMA wal_checkpoint"));
    const QByteArray older = contents(isBackup ? copy : fixture.path());
    fixture.add(StoreFixture::schedule(QStringLiteral("А")));
    fixture.sql(QStringLiteral("PRAGMA wal_checkpoint"));
    fixture.add(StoreFixture::schedule(QStringLiteral("Б")));
    const QByteArray log = contents(fixture.path() + QStringLiteral("-wal"));
    fixture.database.close();
    write(fixture.path(), older);
    write(fixture.path() + QStringLiteral("-wal"), log);
    return fixture.path();
}

/// How many there are in a sound store; -1 where it is none.
int schedulesIn(const QString &path)
{
    QList<store::Fault> faults;
    orvex::StorageChange all;
    store::Database database;
    const bool isSound = database.open(store::StoreAddress::file(path)).ok() && database.check(faults).ok()
        && faults.isEmpty() && database.snapshot(all).ok();
    return isSound ? all.schedules.size() : -1;
}

/// Brings what \a other holds into the place of the fixture's store.
void replaceStore(const StoreFixture &fixture, const StoreFixture &other, const QString &how)
{
    if (how == QLatin1String("another file of its name")) {
        if (rename(other.path().toLocal8Bit().constData(), fixture.path().toLocal8Bit().constData()) != 0)
            qFatal("The store cannot be replaced");
        return;
    }
    QString source = other.path();
    if (how == QLatin1String("a backup written into it")) {
        source += QStringLiteral(".copy");
        if (!store::Database::backUp(other.address(), source).ok())
            qFatal("There is no backup");
    }
    write(fixture.path(), contents(source));
}

/// Makes the bad file of a row, out of the fixture's store or in \a folder, and gives its path.
QString prepareBadFile(const QString &what, const QTemporaryDir &folder, StoreFixture &fixture)
{
    if (what == QLatin1String("no folder"))
        return folder.filePath(QStringLiteral("none/file"));
    if (what == QLatin1String("no file"))
        return folder.filePath(QStringLiteral("none"));
    if (what == QLatin1String("folder"))
        return folder.path();
    if (what == QLatin1String("text") || what == QLatin1String("empty")) {
        write(folder.filePath(what), QByteArray(what == QLatin1String("text") ? 5000 : 0, 'x'));
        return folder.filePath(what);
    }
    static const QHash<QString, QString> statements{
        {QStringLiteral("foreign"), QStringLiteral("PRAGMA application_id = 7")},
        {QStringLiteral("newer"), QStringLiteral("UPDATE schema_version SET version = 1000")},
        {QStringLiteral("older"), QStringLiteral("UPDATE schema_version SET version = 0")},
    };
    if (what.endsWith(QLatin1String("log")))
        return putCopyBesideAnotherLog(fixture, what == QLatin1String("log"));
    if (statements.contains(what))
        fixture.sql(statements.value(what));
    fixture.database.close();
    const QByteArray good = contents(fixture.path());
    if (what == QLatin1String("damaged"))
        write(fixture.path(), good.left(4096) + QByteArray(good.size() - 4096, '\xee'));
    return fixture.path();
}

} // namespace

class StoreLinkTest : public QObject
{
    Q_OBJECT

private slots:
    void shouldReplyBeforeItReportsTheChange()
    {
        StoreFixture fixture;
        store::StoreLink link;
        QStringList events;
        QList<int> results;
        connect(&link, &store::StoreLink::replied, this, [&](const Command &reply) {
            QCOMPARE(QThread::currentThread(), qApp->thread());
            events << QStringLiteral("reply");
            results << reply.result();
        });
        connect(&link, &store::StoreLink::changed, this, [&](const orvex::StorageChange &change) {
            QVERIFY(!change.full);
            events << QStringLiteral("change %1").arg(change.schedules.size());
        });
        link.open(fixture.address());
        // Submitted before the store is open: they wait their turn.
        for (int i = 0; i < 3; ++i) {
            const auto record = StoreFixture::schedule(i == 1 ? QString() : QStringLiteral("График %1").arg(i));
            link.submit(StoreFixture::request(request::AddSchedule, record));
        }
        QTRY_COMPARE(events.size(), 5);
        QCOMPARE(results, (QList<int>{ResultSuccess, ResultInvalidData, ResultSuccess}));
        QCOMPARE(events.join(QLatin1Char(' ')), QStringLiteral("reply change 1 reply reply change 1"));
    }

    void shouldReportWhatASecondProcessDoes()
    {
        StoreFixture fixture;
        const auto record = fixture.add(StoreFixture::schedule(QStringLiteral("А")));
        LinkFixture client(fixture);
        const QStringList arguments{QStringLiteral("--rename-all"), fixture.path(), QStringLiteral("Б")};
        QCOMPARE(QProcess::execute(QCoreApplication::applicationFilePath(), arguments), 0);
        QTRY_COMPARE(client.changed.size(), 1);
        const auto change = client.changed.at(0).at(0).value<orvex::StorageChange>();
        QVERIFY(!change.full);
        QCOMPARE(change.schedules.keys(), QList<quint32>{quint32(record.id)});
        QCOMPARE(change.schedules.value(quint32(record.id)).name, QStringLiteral("Б"));

        fixture.sql(QStringLiteral("DELETE FROM granted_role WHERE role = 'RL_SCHEDULE_DELETE'"));
        QTRY_COMPARE(client.roles.size(), 1);
        QCOMPARE(client.roles.at(0).at(0).toStringList(),
                 (QStringList{QStringLiteral("RL_SCHEDULE_CREATE"), QStringLiteral("RL_SCHEDULE_SHOW"),
                              QStringLiteral("RL_SCHEDULE_UPDATE")}));
    }

    void shouldSayWhatIsWrongWithAFile_data()
    {
        QTest::addColumn<QString>("what");
        QTest::addColumn<QString>("expected");
        const auto row = [](const char *name, const char *what, const char *expected) {
            QTest::newRow(name) << QString::fromLatin1(what) << QString::fromUtf8(expected);
        };
        row("no folder", "no folder", "Папки %1/none нет.");
        row("no file", "no file", "Файла хранилища %1/none нет.");
        row("a folder", "folder", "%1 – папка, а не файл хранилища.");
        row("a text", "text", "Файл %1/text – не хранилище данных этой программы.");
        row("an empty file", "empty", "Файл %1/empty – не хранилище данных этой программы.");
        row("another program's database", "foreign", "не хранилище данных этой программы.");
        row("newer schema", "newer", "Обновите программу.");
        row("older schema", "older", "orvexctl upgrade");
        row("damaged", "damaged", "Восстановите его из резервной копии.");
        row("log begun after the file was copied", "newer log",
            "уберите из папки файлы store.orvex-wal и store.orvex-shm");
        row("log of another store", "log", "уберите из папки файлы store.orvex-wal и store.orvex-shm");
    }

    void shouldSayWhatIsWrongWithAFile()
    {
        QFETCH(QString, what);
        QFETCH(QString, expected);
        QTemporaryDir folder;
        StoreFixture fixture;
        const QString path = prepareBadFile(what, folder, fixture);
        const bool existed = QFileInfo::exists(path);
        const QByteArray before = contents(path);

        store::StoreLink link;
        QSignalSpy failed(&link, &store::StoreLink::failed);
        QSignalSpy opened(&link, &store::StoreLink::opened);
        QSignalSpy replied(&link, &store::StoreLink::replied);
        link.open(store::StoreAddress::file(path));
        link.submit(StoreFixture::request(request::RemoveSchedules, QList<quint32>()));
        QVERIFY(replied.wait());
        QCOMPARE(replied.at(0).at(0).value<Command>().result(), int(ResultNoConnection));
        QCOMPARE(failed.size(), 1);
        QVERIFY(opened.isEmpty());
        if (expected.contains(QLatin1String("%1")))
            expected = expected.arg(folder.path());
        const QString text = failed.at(0).at(0).toString();
        QVERIFY2(text.contains(expected), qPrintable(text));
        QCOMPARE(contents(path), before);
        QCOMPARE(QFileInfo::exists(path), existed);
    }

    void shouldReadTheWholeWhenTheFileIsReplaced_data()
    {
        QTest::addColumn<QString>("how");
        for (const char *how : {"another file of its name", "a backup written into it", "another store written into it",
                                "an older copy of itself written into it"})
            QTest::newRow(how) << QString::fromLatin1(how);
    }

    void shouldReadTheWholeWhenTheFileIsReplaced()
    {
        QFETCH(QString, how);
        StoreFixture fixture;
        StoreFixture other;
        other.add(StoreFixture::schedule(QStringLiteral("Б")));
        other.sql(QStringLiteral("DELETE FROM granted_role WHERE role = 'RL_SCHEDULE_DELETE'"));
        other.database.close();
        fixture.database.close();
        const QString kept = fixture.path() + QStringLiteral(".kept");
        QCOMPARE(link(fixture.path().toLocal8Bit().constData(), kept.toLocal8Bit().constData()), 0);

        const QByteArray older = contents(fixture.path());
        const bool isOlder = how == QLatin1String("an older copy of itself written into it");
        LinkFixture client(fixture);
        orvex::StorageChange change;
        connect(&client.link, &store::StoreLink::connectedChanged, this, [&](bool isConnected) {
            if (isConnected)
                change = client.changed.last().at(0).value<orvex::StorageChange>();
        });
        // They wait in the log, which is none of the other file's business.
        for (int i = 0; i < 20; ++i)
            QVERIFY(client.add(QStringLiteral("А")).isSuccess());
        if (isOlder) {
            fixture.sql(QStringLiteral("PRAGMA wal_checkpoint"));
            QVERIFY(client.add(QStringLiteral("А")).isSuccess());
            write(fixture.path(), older);
        } else {
            replaceStore(fixture, other, how);
        }

        QTRY_COMPARE(client.connected.size(), 3);
        QCOMPARE(client.connected.at(1).at(0).toBool(), false);
        QVERIFY(change.full); // before the connection is announced
        QCOMPARE(change.schedules.size(), isOlder ? 0 : 1);
        QCOMPARE(change.schedules.value(1).name, isOlder ? QString() : QStringLiteral("Б"));
        QCOMPARE(client.roles.size(), isOlder ? 0 : 1);
        QVERIFY(client.add(QStringLiteral("В")).isSuccess());
        client.link.close();
        QCOMPARE(schedulesIn(fixture.path()), isOlder ? 1 : 2);
        if (how == QLatin1String("another file of its name"))
            QCOMPARE(schedulesIn(kept), 20);
    }

    void shouldAnswerACutOffRequestBeforeAnythingElse()
    {
        StoreFixture fixture;
        StoreFixture other;
        other.add(StoreFixture::schedule(QStringLiteral("Б")));
        fixture.database.close();
        other.database.close();
        // A store is asked for the time in the middle of a request: then another one takes its place.
        std::atomic_bool replace{false};
        store::LinkSchedule schedule;
        schedule.clock = [&] {
            if (replace.exchange(false))
                replaceStore(fixture, other, QStringLiteral("another file of its name"));
            return QDateTime::currentDateTimeUtc();
        };
        LinkFixture client(fixture, schedule);
        // Behind it the opening is over, which asks for the time as well.
        QVERIFY(client.send(StoreFixture::request(request::RemoveSchedules, QList<quint32>())).isSuccess());
        QStringList events;
        connect(&client.link, &store::StoreLink::replied, this, [&](const Command &reply) {
            events << (reply.isSuccess() ? QStringLiteral("reply") : QStringLiteral("failure"));
        });
        connect(&client.link, &store::StoreLink::changed, this, [&](const orvex::StorageChange &change) {
            events << QStringLiteral("%1 %2").arg(change.full ? "whole" : "change").arg(change.schedules.size());
        });
        replace = true;
        client.link.submit(StoreFixture::request(request::AddSchedule, StoreFixture::schedule(QStringLiteral("А"))));
        QTRY_COMPARE(events.size(), 3);
        QCOMPARE(events, (QStringList{QStringLiteral("reply"), QStringLiteral("whole 1"), QStringLiteral("change 1")}));
        QCOMPARE(client.connected.size(), 1);
    }

    void shouldSayOnceWhyTheConnectionIsGone()
    {
        StoreFixture fixture;
        LinkFixture client(fixture);
        fixture.sql(QStringLiteral("UPDATE schema_version SET version = 1000"));
        QVERIFY(client.lost.wait());
        QVERIFY(!client.isConnected());
        const QString text = client.lost.at(0).at(0).toString();
        QVERIFY2(text.contains(QStringLiteral("Обновите программу.")), qPrintable(text));
        QVERIFY(!client.lost.wait(1500)); // it goes on trying
        fixture.sql(QStringLiteral("UPDATE schema_version SET version = 1"));
        QVERIFY(client.connected.wait());
        QVERIFY(client.isConnected());
    }

    void shouldEndWhileRequestsWait()
    {
        StoreFixture fixture;
        store::StoreLink link;
        QSignalSpy replied(&link, &store::StoreLink::replied);
        link.open(fixture.address());
        for (int i = 0; i < 2000; ++i)
            link.submit(StoreFixture::request(request::AddSchedule, StoreFixture::schedule(QStringLiteral("А"))));
        QVERIFY(replied.wait());
        link.close();
        const int answered = replied.size();
        link.submit(StoreFixture::request(request::AddSchedule, StoreFixture::schedule(QStringLiteral("А"))));
        QCoreApplication::processEvents();
        QCOMPARE(replied.size(), answered);

        // Not all were run, and what was run is whole: the next one opens the same store.
        QSignalSpy opened(&link, &store::StoreLink::opened);
        link.open(fixture.address());
        QVERIFY(opened.wait());
        const int stored = opened.at(0).at(0).value<orvex::StorageChange>().schedules.size();
        QVERIFY2(stored >= answered && stored < 2000, qPrintable(QString::number(stored)));
    }

    void shouldNotWaitForABackupAtItsEnd()
    {
        StoreFixture fixture;
        store::BulkWriter writer(fixture.database);
        writer.setBlob(fixture.employee, QStringLiteral("large"), QByteArray(100 * 1024 * 1024, 'x'));
        QVERIFY(writer.commit().ok());
        LinkFixture client(fixture, {store::systemClock(), 1, 60000});
        const auto copies = [folder = QFileInfo(fixture.path()).path() + QStringLiteral("/backups")](const char *name) {
            return QDir(folder).entryList({QLatin1String(name)}, QDir::Files).size();
        };
        const QDeadlineTimer deadline(10000);
        while (copies("*.partial-*") == 0 && !deadline.hasExpired())
            QThread::msleep(1);
        client.link.close();
        QCOMPARE(copies("*.orvex"), 0);
        QTRY_COMPARE_WITH_TIMEOUT(copies("*.orvex"), 1, 30000);
    }

    void shouldKeepAnOpenFileFromOthers()
    {
        StoreFixture fixture;
        fixture.database.close();
        constexpr QFile::Permissions owner = QFile::ReadOwner | QFile::WriteOwner | QFile::ReadUser | QFile::WriteUser;
        QVERIFY(QFile::setPermissions(fixture.path(), owner | QFile::ReadGroup | QFile::ReadOther));
        // Who only reads changes nothing.
        QVERIFY(fixture.database.open(fixture.address(), store::Access::Read).ok());
        QVERIFY(QFile::permissions(fixture.path()) & QFile::ReadOther);
        store::Database writer;
        QVERIFY(writer.open(fixture.address()).ok());
        for (const char *suffix : {"", "-wal", "-shm"})
            QCOMPARE(QFile::permissions(fixture.path() + QLatin1String(suffix)), owner);
    }

    void shouldCreateForTheOwnerAlone()
    {
        QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("new/deep/store.orvex"));
        const auto address = store::StoreAddress::file(path);
        QVERIFY(store::Database::create(address).ok());
        const auto others = QFile::ReadGroup | QFile::WriteGroup | QFile::ExeGroup | QFile::ReadOther
            | QFile::WriteOther | QFile::ExeOther;
        for (const QString &made : {path, QFileInfo(path).path(), folder.filePath(QStringLiteral("new"))})
            QVERIFY2(!(QFile::permissions(made) & others), qPrintable(made));

        store::Database database;
        QVERIFY(database.open(address).ok());
        QVERIFY(!(QFile::permissions(path + QStringLiteral("-wal")) & others));
    }
};

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.value(1) == QLatin1String("--rename-all"))
        return renameAll(arguments.value(2), arguments.value(3));
    StoreLinkTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_storelink.moc"
