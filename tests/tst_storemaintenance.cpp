#include "bulkwriter.h"
#include "storefixture.h"

#include "backups.h"
#include "datanames.h"
#include "storefile.h"
#include "storelink.h"
#include "testcolumns.h"

#include <QBuffer>
#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QRandomGenerator>
#include <QSignalSpy>
#include <QtTest>

#include <atomic>
#include <thread>

using namespace support;

using store::Database;
using store::StoreAddress;

namespace {

store::Outcome load(const QString &path, QByteArray document)
{
    QBuffer buffer(&document);
    buffer.open(QIODevice::ReadOnly);
    return Database::createFromDump(StoreAddress::file(path), buffer);
}

QString dailyBackup(const QString &date)
{
    return QStringLiteral("store-%1.orvex").arg(date);
}

/// Fills a store with random contents, including unusual texts and extreme numbers.
class RandomStore
{
public:
    RandomStore(StoreFixture &fixture, quint32 seed)
        : m_fixture(fixture)
        , m_random(seed)
    {
    }

    void fill()
    {
        store::BulkWriter writer(m_fixture.database);
        QList<quint32> shifts{m_fixture.dayShift, m_fixture.nightShift};
        for (int i = 0; i < 5; ++i)
            shifts.append(writer.addGuideShift({text(), text(), QString(), {{time(), time()}, {time(), time()}}}));
        QList<quint32> employees;
        for (int i = 0; i < 10; ++i) {
            employees.append(
                writer.addEmployee({text(), text(), text(), m_random.bounded(2) ? m_fixture.department : 0, 0, i > 7}));
            writer.setBlob(employees.last(), text(), bytes());
        }
        for (int i = 0; i < 20; ++i) {
            const quint32 id = writer.addSchedule(record(employees));
            writer.setCalendarDays(id, days(shifts));
            if (m_random.bounded(3) == 0)
                writer.setMainSchedule(employees.at(m_random.bounded(employees.size())), id);
        }
        for (int i = 0; i < 10; ++i)
            writer.setProductionDay({date(), m_random.bounded(4), text()});
        if (const auto stored = writer.commit(); !stored.ok())
            qFatal("%s", qPrintable(stored.message()));
        // Requests add log entries, versions and gaps between the identifiers.
        for (int i = 0; i < 5; ++i) {
            auto record = m_fixture.add(newSchedule(QStringLiteral("x") + text()));
            record.comment = text();
            (void)m_fixture.database.execute(storeRequest(request::UpdateSchedule, record));
            if (i % 2)
                (void)m_fixture.database.execute(
                    storeRequest(request::RemoveSchedules, QList<quint32>{quint32(record.id)}));
        }
    }

private:
    int time() { return m_random.bounded(86401); }
    QDate date() { return QDate(1, 1, 1).addDays(m_random.bounded(3652059)); }
    QByteArray bytes()
    {
        QByteArray data(m_random.bounded(3000), Qt::Uninitialized);
        for (char &c : data)
            c = char(m_random.bounded(256));
        return data;
    }
    QString text()
    {
        static const QStringList pieces =
            QStringLiteral("График|\"|\\u0041|\n\t\r|\x01\x1f\x7f|\0|😀|[{,}]|").split(QLatin1Char('|'));
        QString result;
        for (int i = m_random.bounded(5); i >= 0; --i)
            result += pieces.at(m_random.bounded(pieces.size()));
        return result;
    }
    orvex::SCHEDULE_DATA record(const QList<quint32> &employees)
    {
        auto record = newSchedule(QStringLiteral("x") + text(), orvex::ScheduleMode(m_random.bounded(4)));
        record.comment = text();
        record.color = m_random.bounded(2) ? QStringLiteral("#0a0b0c") : QString();
        record.startDate = m_random.bounded(2) ? date() : QDate();
        record.useHolidays = qint32(m_random.generate());
        record.freeNorm = time();
        if (m_random.bounded(3) == 0) {
            record.type = orvex::SchedulePersonal;
            record.workerId = employees.at(m_random.bounded(employees.size()));
            record.startDate = date();
        }
        for (int i = m_random.bounded(3); i > 0; --i) {
            record.shifts.append(shift({{time(), time()}, {time(), time()}}));
            record.shifts.last().flags = qint32(m_random.generate());
        }
        for (int i = m_random.bounded(9); i > 0 && !record.shifts.isEmpty(); --i) {
            orvex::SCHEDULE_DAY day;
            day.shift = m_random.bounded(-1, record.shifts.size());
            day.dayOff = day.shift == -1 && m_random.bounded(2);
            record.days.append(day);
        }
        return record;
    }
    QList<orvex::SCHEDULE_CALENDAR_DAY> days(const QList<quint32> &shifts)
    {
        QList<orvex::SCHEDULE_CALENDAR_DAY> list;
        for (int i = m_random.bounded(20); i > 0; --i) {
            auto day = calendarDay(date(), shifts.at(m_random.bounded(shifts.size())), m_random.bounded(4));
            if (day.dayMode == orvex::DayOff)
                day.shiftId = 0;
            if (m_random.bounded(2))
                day.intervals = {{time(), time()}};
            list.append(day);
        }
        return list;
    }

    StoreFixture &m_fixture;
    QRandomGenerator m_random;
};

} // namespace

class StoreMaintenanceTest : public QObject
{
    Q_OBJECT

private slots:
    void shouldFindEachFault_data()
    {
        addColumns<QString, QString>({"statement", "expected"});
        const auto row = [](const char *name, const char *statement, const char *expected) {
            QTest::newRow(name) << QString::fromUtf8(statement) << QString::fromUtf8(expected);
        };
        row("day off with a shift",
            "UPDATE schedule SET mode = replace(mode, '\"off\":false', '\"off\":true') WHERE id = 1",
            "У выходного дня графика работ есть смена.");
        row("calendar day off with a shift", "UPDATE schedule_calendar_day SET day_mode = 0",
            "У выходного дня 29.02.2024");
        row("work mode that is not JSON", "UPDATE schedule SET mode = '{\"days\":[' WHERE id = 1", "Режим работы");
        row("work mode with a shift after the last",
            "UPDATE schedule SET mode = replace(mode, '\"shift\":0', '\"shift\":7') WHERE id = 1", "Режим работы");
        row("intervals that are not pairs", "UPDATE schedule_calendar_day SET intervals = '[1,2]'", "Интервалы");
        row("start date that does not exist", "UPDATE schedule SET start_date = '2023-02-29' WHERE id = 1",
            "2023-02-29");
        row("colour by name", "UPDATE schedule SET color = 'red' WHERE id = 1", "Цвет");
        row("day without a date", "UPDATE schedule_calendar_day SET date = 'soon'", "нет правильной даты");
        row("missing shift", "DELETE FROM schedule_shift WHERE id = 1", "стоит смена 1, которой нет");
        row("employee of a missing unit", "UPDATE subject SET unit_id = 4711", "в подразделении 4711, которого нет");
        row("missing main schedule", "UPDATE subject SET schedule_id = 4711", "Основного графика 4711");
        row("missing employee", "UPDATE schedule SET worker_id = 4711", "Работника 4711");
        row("units in a cycle", "UPDATE org_unit SET parent_id = 2 WHERE id = 1", "входит само в себя");
        row("days of a missing schedule", "UPDATE schedule SET id = 9 WHERE id = 1", "у графика 1, которого нет");
        row("changed photo", "UPDATE blob SET data = x'00'", "Контрольная сумма данных PT_PHOTO");
        row("two personal schedules for a month",
            "DROP INDEX schedule_one_personal; INSERT INTO schedule (name, type, worker_id, start_date, changed_by, "
            "changed_at) SELECT name, 4, 3, '2024-01-01', '', '' FROM (SELECT 'a' AS name UNION ALL SELECT 'b')",
            "несколько индивидуальных графиков, которые начинаются 2024-01-01");
        row("production day without a date", "INSERT INTO production_day (date, mode) VALUES ('x', 2)",
            "с неверной датой");
        row("missing service row", "DELETE FROM feed_info", "feed_info");
    }

    void shouldFindEachFault()
    {
        QFETCH(QString, statement);
        QFETCH(QString, expected);
        StoreFixture fixture;
        auto record = newSchedule(QStringLiteral("Пятидневка"));
        record.shifts = {{1, 0, {{1, 28800, 61200}}}};
        record.days = {{1, 0, 1, false}, {2, -1, -1, true}};
        record = fixture.add(record);
        store::BulkWriter writer(fixture.database);
        auto day = calendarDay({2024, 2, 29}, fixture.dayShift);
        day.intervals = {{0, 3600}};
        writer.setCalendarDays(quint32(record.id), {day});
        writer.setBlob(fixture.employee, db::param::PHOTO, QByteArray("picture"));
        QVERIFY(writer.commit().ok());
        fixture.database.close();
        QCOMPARE(faultsOf(fixture.path()), QStringList());

        for (const QString &part : statement.split(QStringLiteral("; ")))
            fixture.sql(part);
        const QString found = faultsOf(fixture.path()).join(QLatin1Char('\n'));
        QVERIFY2(found.contains(expected), qPrintable(found));
        // A dump with such a fault is not loaded.
        if (!statement.contains(QLatin1String("feed_info"))) {
            QTemporaryDir folder;
            const auto loaded = load(folder.filePath(QStringLiteral("loaded.db")), dumpOf(fixture.path()));
            QCOMPARE(loaded.code, int(ResultInvalidData));
            QVERIFY(QDir(folder.path()).isEmpty());
        }
    }

    void shouldFindADamagedPage()
    {
        StoreFixture fixture;
        RandomStore(fixture, 1).fill();
        fixture.database.close();
        const QByteArray good = contents(fixture.path());
        int found = 0;
        for (int page = 1; page < good.size() / 4096; ++page) {
            QByteArray damaged = good;
            damaged.replace(page * 4096, 512, QByteArray(512, '\xee'));
            QFile file(fixture.path());
            QVERIFY(file.open(QIODevice::WriteOnly) && file.write(damaged) == damaged.size());
            file.close();
            found += !faultsOf(fixture.path()).isEmpty();
            // Opening and reading either succeed or fail with advice.
            Database database;
            orvex::StorageChange all;
            const store::Outcome opened = database.open(fixture.address());
            const store::Outcome read = opened.ok() ? database.snapshot(all) : opened;
            QVERIFY(read.ok() || !read.advice.isEmpty());
        }
        // Damage to free pages cannot be found.
        QVERIFY2(found > good.size() / 4096 * 9 / 10, qPrintable(QString::number(found)));
    }

    void shouldLoadEverythingThatWasDumped_data()
    {
        QTest::addColumn<int>("seed");
        for (int seed = 1; seed <= 25; ++seed)
            QTest::addRow("random store %d", seed) << seed;
    }

    void shouldLoadEverythingThatWasDumped()
    {
        QFETCH(int, seed);
        StoreFixture fixture;
        RandomStore(fixture, quint32(seed)).fill();
        const Command addition = storeRequest(request::AddSchedule, newSchedule(QStringLiteral("А")));
        const QByteArray reply = fixture.database.execute(addition).payload();
        qint32 removed = 0;
        QVERIFY(readPayload(reply, removed));
        const Command removal = storeRequest(request::RemoveSchedules, QList<quint32>{quint32(removed)});
        QVERIFY(fixture.database.execute(removal).isSuccess());
        const QByteArray document = dumpOf(fixture.path());
        QVERIFY2(QJsonDocument::fromJson(document).isObject(), "another parser rejects the document");
        QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("loaded.db"));
        const auto loaded = load(path, document.trimmed()); // an editor may have removed the last line end
        QVERIFY2(loaded.ok(), qPrintable(loaded.message()));
        QCOMPARE(dumpOf(path), document);
        QCOMPARE(faultsOf(path), QStringList());
        QVERIFY(!(QFile::permissions(path) & (QFile::ReadGroup | QFile::ReadOther)));

        // Clients read the same records.
        const auto original = snapshotOf(fixture.path());
        const auto restored = snapshotOf(path);
        QVERIFY(original.schedules == restored.schedules && original.objects == restored.objects);

        // The requests are in the loaded log, and the identifier is not used again.
        Database copy;
        QVERIFY(copy.open(StoreAddress::file(path)).ok());
        QCOMPARE(copy.execute(addition).payload(), reply);
        QVERIFY(copy.execute(removal).isSuccess());
        const Command next = storeRequest(request::AddSchedule, newSchedule(QStringLiteral("Б")));
        QCOMPARE(copy.execute(next).payload(), fixture.database.execute(next).payload());
    }

    void shouldLoadNothingFromACorruptDocument_data()
    {
        addColumns<QByteArray, QByteArray>({"from", "to"});
        const auto row = [](const char *name, const char *from, const char *to) {
            QTest::newRow(name) << QByteArray(from) << QByteArray(to);
        };
        row("other format", "orvex-store-dump", "somebody-else");
        row("newer version", "\"version\": 1", "\"version\": 2");
        row("no sequences", "\"sequences\": {\"object\": 4, \"schedule_shift\": 2, \"shift_interval\": 3},\n", "");
        row("missing table", "\"blob\"", "\"note\"");
        row("table twice", "\"blob\"", "\"subject\"");
        row("other column", "\"kind\"", "\"sort\"");
        row("text for a number", "[1, \"unit\"]", "[\"1\", \"unit\"]");
        row("fraction for a number", "[1, \"unit\"]", "[1.5, \"unit\"]");
        row("number beyond 64 bits", "[1, \"unit\"]", "[99999999999999999999, \"unit\"]");
        row("null in a column that needs a value", "[1, \"unit\"]", "[1, null]");
        row("short row", "[1, \"unit\"]", "[1]");
        row("long row", "[1, \"unit\"]", "[1, \"unit\", 1]");
        row("nested row", "[1, \"unit\"]", "[1, [\"unit\"]]");
        row("same row twice", "[1, \"unit\"]", "[1, \"unit\"], [1, \"unit\"]");
        row("reference to a missing record", "[1, \"unit\"]", "[77, \"unit\"]");
        row("value that the schema refuses", "[1, \"unit\"]", "[1, \"ship\"]");
        row("checksum that is not base64", "\"UFQ=\"", "\"%%%\"");
        row("photo with another checksum", "\"UFQ=\"", "\"UFU=\"");
        row("broken text", "Токарь", "\xff\xfe");
        row("text after the end", "}\n}\n", "}\n}\n{}");
        row("last bracket cut off", "}\n}\n", "}\n");
        row("cut off inside a text", "карь", nullptr);
    }

    void shouldLoadNothingFromACorruptDocument()
    {
        QFETCH(QByteArray, from);
        QFETCH(QByteArray, to);
        StoreFixture fixture;
        store::BulkWriter writer(fixture.database);
        writer.setBlob(fixture.employee, db::param::PHOTO, QByteArray("PT"));
        QVERIFY(writer.commit().ok());
        QByteArray document = dumpOf(fixture.path());
        QVERIFY2(document.contains(from), document.constData());
        if (to.isNull())
            document.truncate(document.indexOf(from));
        else
            document.replace(from, to);
        QTemporaryDir folder;
        const auto loaded = load(folder.filePath(QStringLiteral("loaded.db")), document);
        QCOMPARE(loaded.code, int(ResultInvalidData));
        QVERIFY(!loaded.text.isEmpty() && !loaded.advice.isEmpty());
        QVERIFY(QDir(folder.path()).isEmpty());
    }

    void shouldBackUpOneStateWhileClientsWrite()
    {
        StoreFixture fixture;
        RandomStore(fixture, 3).fill();
        // Every transaction adds two schedules of one name, so that a copy of half a transaction is noticed.
        std::atomic_bool stop{false};
        std::atomic_int written{0};
        std::thread client([&] {
            Database database;
            if (!database.open(fixture.address()).ok())
                return;
            while (!stop) {
                store::BulkWriter writer(database);
                const auto record = newSchedule(QStringLiteral("пара %1").arg(written.load()));
                writer.addSchedule(record);
                writer.addSchedule(record);
                written += writer.commit().ok();
            }
        });
        const auto end = qScopeGuard([&] {
            stop = true;
            client.join();
        });
        QTemporaryDir folder;
        int last = -1;
        for (int i = 0; i < 5; ++i) {
            QTRY_VERIFY(written > last);
            last = written;
            const QString target = folder.filePath(QStringLiteral("copy %1.db").arg(i));
            const auto copied = Database::backUp(fixture.address(), target);
            QVERIFY2(copied.ok(), qPrintable(copied.message()));
            QCOMPARE(faultsOf(target), QStringList());
            QHash<QString, int> counts;
            for (const auto &schedule : snapshotOf(target).schedules)
                ++counts[schedule.name];
            for (int k = 0; counts.contains(QStringLiteral("пара %1").arg(k)) || k < last; ++k)
                QCOMPARE(counts.value(QStringLiteral("пара %1").arg(k)), 2);
            QVERIFY(!(QFile::permissions(target) & (QFile::ReadGroup | QFile::ReadOther)));
        }
    }

    void shouldKeepTenDailyBackups()
    {
        StoreFixture fixture;
        const QDateTime start(QDate(2024, 2, 24), QTime(12, 0));
        const QDir folder(store::backups::folder(fixture.address()));
        const QString notes = QStringLiteral("store-notes.orvex");
        for (int day = 0; day < 13; ++day) {
            // A second one on the same day is not made.
            for (const int hours : {0, 5})
                QVERIFY(store::backups::makeDaily(fixture.address(), start.addDays(day).addSecs(hours * 3600)).ok());
            if (day == 3) {
                QFile other(folder.filePath(notes));
                QVERIFY(other.open(QIODevice::WriteOnly));
            }
        }
        const auto names = [&folder] { return QDir(folder.path()).entryList(QDir::Files, QDir::Name); };
        QCOMPARE(names().size(), store::backups::Kept + 1);
        QCOMPARE(names().first(), dailyBackup("2024-02-27"));
        QCOMPARE(names().mid(store::backups::Kept - 1), (QStringList{dailyBackup("2024-03-07"), notes}));
        QCOMPARE(faultsOf(folder.filePath(names().first())), QStringList());

        // After jumps of the clock, copies dated in the future are removed first.
        const QDateTime today = start.addDays(12);
        for (const QDateTime &now : {today.addYears(30), today.addYears(-30), today.addDays(1)})
            QVERIFY(store::backups::makeDaily(fixture.address(), now).ok());
        QCOMPARE(names().size(), store::backups::Kept + 1);
        QCOMPARE(names().mid(0, 2), (QStringList{dailyBackup("1994-03-07"), dailyBackup("2024-02-29")}));
        QCOMPARE(names().mid(store::backups::Kept - 1), (QStringList{dailyBackup("2024-03-08"), notes}));

        // If copying fails, no older copy is removed.
        const QStringList kept = names();
        fixture.database.close();
        QVERIFY(QFile::resize(fixture.path(), 4096));
        QVERIFY(!store::backups::makeDaily(fixture.address(), start.addDays(20)).ok());
        QCOMPARE(names(), kept);
    }

    void shouldBackUpOnceADayWhileRequestsRun()
    {
        StoreFixture fixture;
        // No backup can be made: a file has the name of their folder.
        QFile file(store::backups::folder(fixture.address()));
        QVERIFY(file.open(QIODevice::WriteOnly));
        std::atomic<qint64> now{QDateTime(QDate(2024, 2, 28), QTime(12, 0)).toMSecsSinceEpoch()};
        store::StoreLink link(
            nullptr,
            {[&now] { return QDateTime::fromMSecsSinceEpoch(now, Qt::UTC); }, /*firstBackup*/ 1, /*nextBackup*/ 20});
        QSignalSpy failed(&link, &store::StoreLink::backupFailed);
        QSignalSpy replied(&link, &store::StoreLink::replied);
        link.open(fixture.address());
        QVERIFY(failed.wait());
        QVERIFY(failed.at(0).at(0).toString().contains(QStringLiteral("Не удалось создать папку")));
        QVERIFY(!failed.wait(200)); // more attempts, the same reason
        QVERIFY(file.remove());
        const auto copies = [&file] {
            return QDir(file.fileName()).entryList({QStringLiteral("*.orvex")}, QDir::Files);
        };
        QTRY_COMPARE(copies(), QStringList{dailyBackup("2024-02-28")});
        now += 24 * 3600 * 1000;
        QTRY_COMPARE(copies().size(), 2);
        link.submit(storeRequest(request::AddSchedule, newSchedule(QStringLiteral("А"))));
        QVERIFY(replied.wait());
        QVERIFY(replied.at(0).at(0).value<Command>().isSuccess());
        link.close();
        QCOMPARE(copies().size(), 2);
        QCOMPARE(failed.size(), 1);
    }
};

QTEST_GUILESS_MAIN(StoreMaintenanceTest)

#include "tst_storemaintenance.moc"
