#include "linkfixture.h"
#include "storefile.h"
#include "testcolumns.h"

#include <QDir>
#include <QFile>
#include <QtTest>

#include <unistd.h>

using namespace support;

namespace {

void write(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        qFatal("%s cannot be written", qPrintable(path));
}

/// Makes the state after a client was killed and its file, but not the log, was replaced by a backup or an older copy.
QString putCopyBesideAnotherLog(StoreFixture &fixture, bool isBackup)
{
    const QString copy = fixture.path() + QStringLiteral(".copy");
    if (isBackup && !store::Database::backUp(fixture.address(), copy).ok())
        qFatal("The backup cannot be made");
    fixture.sql(QStringLiteral("PRAGMA wal_checkpoint"));
    const QByteArray older = contents(isBackup ? copy : fixture.path());
    fixture.add(newSchedule(QStringLiteral("А")));
    fixture.sql(QStringLiteral("PRAGMA wal_checkpoint"));
    fixture.add(newSchedule(QStringLiteral("Б")));
    const QByteArray log = contents(fixture.path() + QStringLiteral("-wal"));
    fixture.database.close();
    write(fixture.path(), older);
    write(fixture.path() + QStringLiteral("-wal"), log);
    return fixture.path();
}

/// Replaces the fixture's store by \a other.
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
            qFatal("The backup cannot be made");
    }
    write(fixture.path(), contents(source));
}

/// Makes the file of a test row from the fixture's store or in \a folder, and returns its path.
QString prepareBadFile(const QString &what, const QTemporaryDir &folder, StoreFixture &fixture)
{
    static const QHash<QString, QString> statements{
        {QStringLiteral("foreign"), QStringLiteral("PRAGMA application_id = 7")},
        {QStringLiteral("newer"), QStringLiteral("UPDATE schema_version SET version = 1000")},
        {QStringLiteral("older"), QStringLiteral("UPDATE schema_version SET version = 0")},
    };
    if (what.endsWith(QLatin1String("log")))
        return putCopyBesideAnotherLog(fixture, what == QLatin1String("log"));
    if (statements.contains(what)) {
        fixture.sql(statements.value(what));
        fixture.database.close();
        return fixture.path();
    }
    if (what == QLatin1String("damaged")) {
        fixture.database.close();
        const QByteArray good = contents(fixture.path());
        write(fixture.path(), good.left(4096) + QByteArray(good.size() - 4096, '\xee'));
        return fixture.path();
    }
    const QString path = what.isEmpty() ? folder.path() : folder.filePath(what);
    if (what == QLatin1String("text") || what == QLatin1String("empty"))
        write(path, QByteArray(what == QLatin1String("text") ? 5000 : 0, 'x'));
    return path;
}

} // namespace

/// The file of a store on the embedded engine: invalid files, changes by other programs, and permissions.
class StoreFilesTest : public QObject
{
    Q_OBJECT

private slots:
    void shouldReportWhyAFileCannotBeOpened_data()
    {
        addColumns<QString, QString>({"what", "expected"});
        const auto row = [](const char *name, const char *what, const char *expected) {
            QTest::newRow(name) << QString::fromLatin1(what) << QString::fromUtf8(expected);
        };
        row("no folder", "none/file", "Папки %1/none нет.");
        row("no file", "none", "Файла хранилища %1/none нет.");
        row("a folder", "", "%1 – папка, а не файл хранилища.");
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

    void shouldReportWhyAFileCannotBeOpened()
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
        link.submit(storeRequest(request::RemoveSchedules, QList<quint32>()));
        QVERIFY(replied.wait());
        QCOMPARE(replied.at(0).at(0).value<Command>().result(), int(ResultNoConnection));
        QCOMPARE(failed.size(), 1);
        QVERIFY(opened.isEmpty());
        expected.replace(QLatin1String("%1"), folder.path());
        const QString text = failed.at(0).at(0).toString();
        QVERIFY2(text.contains(expected), qPrintable(text));
        QCOMPARE(contents(path), before);
        QCOMPARE(QFileInfo::exists(path), existed);
    }

    void shouldReadEverythingAfterTheFileIsReplaced_data()
    {
        QTest::addColumn<QString>("how");
        for (const char *how : {"another file of its name", "a backup written into it", "another store written into it",
                                "an older copy of itself written into it"})
            QTest::newRow(how) << QString::fromLatin1(how);
    }

    void shouldReadEverythingAfterTheFileIsReplaced()
    {
        QFETCH(QString, how);
        StoreFixture fixture;
        StoreFixture other;
        other.add(newSchedule(QStringLiteral("Б")));
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
        // They are in the log, which must not be applied to the other file.
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
        QCOMPARE(snapshotOf(fixture.path()).schedules.size(), isOlder ? 1 : 2);
        QCOMPARE(faultsOf(fixture.path()), QStringList());
        if (how == QLatin1String("another file of its name"))
            QCOMPARE(snapshotOf(kept).schedules.size(),
                     20); // the log has been written into the file that it belongs to
    }

    void shouldRestrictThePermissionsOfAnOpenFile()
    {
        StoreFixture fixture;
        fixture.database.close();
        constexpr QFile::Permissions owner = QFile::ReadOwner | QFile::WriteOwner | QFile::ReadUser | QFile::WriteUser;
        QVERIFY(QFile::setPermissions(fixture.path(), owner | QFile::ReadGroup | QFile::ReadOther));
        // Opening for reading changes nothing.
        QVERIFY(fixture.database.open(fixture.address(), store::Access::Read).ok());
        QVERIFY(QFile::permissions(fixture.path()) & QFile::ReadOther);
        store::Database writer;
        QVERIFY(writer.open(fixture.address()).ok());
        for (const char *suffix : {"", "-wal", "-shm"})
            QCOMPARE(QFile::permissions(fixture.path() + QLatin1String(suffix)), owner);
    }

    void shouldCreateFilesForTheOwnerAlone()
    {
        QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("new/deep/store.orvex"));
        const auto address = store::StoreAddress::file(path);
        QVERIFY(store::Database::create(address).ok());
        const auto others = QFile::ReadGroup | QFile::WriteGroup | QFile::ExeGroup | QFile::ReadOther
            | QFile::WriteOther | QFile::ExeOther;
        for (const QString &created : {path, QFileInfo(path).path(), folder.filePath(QStringLiteral("new"))})
            QVERIFY2(!(QFile::permissions(created) & others), qPrintable(created));

        store::Database database;
        QVERIFY(database.open(address).ok());
        QVERIFY(!(QFile::permissions(path + QStringLiteral("-wal")) & others));
    }
};

QTEST_GUILESS_MAIN(StoreFilesTest)

#include "tst_storefiles.moc"
