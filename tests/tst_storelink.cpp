#include "bulkwriter.h"
#include "linkfixture.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QDir>
#include <QThread>
#include <QtTest>

#include <atomic>

using namespace support;

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
            QCOMPARE(QThread::currentThread(), QCoreApplication::instance()->thread());
            events << QStringLiteral("reply");
            results << reply.result();
        });
        connect(&link, &store::StoreLink::changed, this, [&](const orvex::StorageChange &change) {
            QVERIFY(!change.full);
            events << QStringLiteral("change %1").arg(change.schedules.size());
        });
        link.open(fixture.address());
        // Submitted before the store is open.
        for (int i = 0; i < 3; ++i) {
            const auto record = newSchedule(i == 1 ? QString() : QStringLiteral("График %1").arg(i));
            link.submit(storeRequest(request::AddSchedule, record));
        }
        QTRY_COMPARE(events.size(), 5);
        QCOMPARE(results, (QList<int>{ResultSuccess, ResultInvalidData, ResultSuccess}));
        QCOMPARE(events.join(QLatin1Char(' ')), QStringLiteral("reply change 1 reply reply change 1"));
    }

    void shouldReportChangesOfAnotherConnection()
    {
        StoreFixture fixture;
        auto record = fixture.add(newSchedule(QStringLiteral("А")));
        LinkFixture client(fixture);
        record.name = QStringLiteral("Б");
        QVERIFY(fixture.database.execute(storeRequest(request::UpdateSchedule, record)).isSuccess());
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

    void shouldReplyToAnInterruptedRequestFirst()
    {
        StoreFixture fixture;
        StoreFixture other;
        other.add(newSchedule(QStringLiteral("Б")));
        fixture.database.close();
        other.database.close();
        // The store reads the clock in the middle of a request; its file is replaced at that moment.
        std::atomic_bool replace{false};
        store::LinkTiming schedule;
        schedule.clock = [&] {
            if (replace.exchange(false) && std::rename(qPrintable(other.path()), qPrintable(fixture.path())) != 0)
                qFatal("The store cannot be replaced");
            return QDateTime::currentDateTimeUtc();
        };
        LinkFixture client(fixture, schedule);
        // After this reply the opening, which reads the clock as well, is complete.
        QVERIFY(client.send(storeRequest(request::RemoveSchedules, QList<quint32>())).isSuccess());
        QStringList events;
        connect(&client.link, &store::StoreLink::replied, this, [&](const Command &reply) {
            events << (reply.isSuccess() ? QStringLiteral("reply") : QStringLiteral("failure"));
        });
        connect(&client.link, &store::StoreLink::changed, this, [&](const orvex::StorageChange &change) {
            events << QStringLiteral("%1 %2").arg(change.full ? "full" : "change").arg(change.schedules.size());
        });
        replace = true;
        client.link.submit(storeRequest(request::AddSchedule, newSchedule(QStringLiteral("А"))));
        QTRY_COMPARE(events.size(), 3);
        QCOMPARE(events, (QStringList{QStringLiteral("reply"), QStringLiteral("full 1"), QStringLiteral("change 1")}));
        QCOMPARE(client.connected.size(), 1);
    }

    void shouldReportOnceWhyConnectingFails()
    {
        StoreFixture fixture;
        LinkFixture client(fixture);
        fixture.sql(QStringLiteral("UPDATE schema_version SET version = 1000"));
        QVERIFY(client.lost.wait());
        QVERIFY(!client.isConnected());
        const QString text = client.lost.at(0).at(0).toString();
        QVERIFY2(text.contains(QStringLiteral("Обновите программу.")), qPrintable(text));
        QVERIFY(!client.lost.wait(1500)); // more attempts, the same reason
        fixture.sql(QStringLiteral("UPDATE schema_version SET version = 1"));
        QVERIFY(client.connected.wait());
        QVERIFY(client.isConnected());
    }

    void shouldCloseWhileRequestsWait()
    {
        StoreFixture fixture;
        store::StoreLink link;
        QSignalSpy replied(&link, &store::StoreLink::replied);
        link.open(fixture.address());
        for (int i = 0; i < 2000; ++i)
            link.submit(storeRequest(request::AddSchedule, newSchedule(QStringLiteral("А"))));
        QVERIFY(replied.wait());
        link.close();
        const int answered = replied.size();
        link.submit(storeRequest(request::AddSchedule, newSchedule(QStringLiteral("А"))));
        QCoreApplication::processEvents();
        QCOMPARE(replied.size(), answered);

        // Some were not run, and those that were run are complete.
        QSignalSpy opened(&link, &store::StoreLink::opened);
        link.open(fixture.address());
        QVERIFY(opened.wait());
        const int stored = opened.at(0).at(0).value<orvex::StorageChange>().schedules.size();
        QVERIFY2(stored >= answered && stored < 2000, qPrintable(QString::number(stored)));
    }

    void shouldNotWaitForABackupOnClosing()
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
};

QTEST_GUILESS_MAIN(StoreLinkTest)

#include "tst_storelink.moc"
