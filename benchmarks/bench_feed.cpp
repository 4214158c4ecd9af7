#include "bench_feed.h"

#include "bulkwriter.h"
#include "database.h"
#include "localstorage.h"
#include "requests.h"
#include "storelink.h"
#include "tqdatastream.h"

#include <QCoreApplication>
#include <QDebug>
#include <QEventLoop>
#include <QProcess>
#include <QTemporaryDir>
#include <QTextStream>
#include <QThread>
#include <QTimer>

#include <chrono>

namespace {

constexpr int Changes = 100;

/// The same clock in every process of this machine.
qint64 nowMicroseconds()
{
    using namespace std::chrono;
    return duration_cast<microseconds>(steady_clock::now().time_since_epoch()).count();
}

void require(const store::Outcome &outcome)
{
    if (!outcome.ok())
        qFatal("%s", qPrintable(outcome.message()));
}

QString newStore(const QTemporaryDir &folder, int schedules)
{
    const auto address = store::StoreAddress::file(folder.filePath(QStringLiteral("feed.db")));
    require(store::Database::create(address));
    store::Database database;
    require(database.open(address));
    store::BulkWriter writer(database);
    for (int i = 0; i < schedules; ++i) {
        orvex::SCHEDULE_DATA schedule;
        schedule.name = QStringLiteral("График %1").arg(i);
        schedule.type = orvex::ScheduleFree;
        writer.addSchedule(schedule);
    }
    require(writer.commit());
    return address.filePath();
}

} // namespace

namespace bench {

int runFeedWriter(const QString &file)
{
    store::Database database;
    require(database.open(store::StoreAddress::file(file)));
    orvex::StorageChange all;
    require(database.snapshot(all));
    QTextStream out(stdout);
    QList<orvex::SCHEDULE_DATA> schedules = all.schedules.values();
    for (int i = 0; i < Changes; ++i) {
        auto &schedule = schedules[i % schedules.size()];
        schedule.name += QLatin1Char('.');
        Command command({StoreRequestKind, request::UpdateSchedule});
        command.setId(QUuid::createUuid());
        command.setPayload(writePayload(schedule));
        const qint64 before = nowMicroseconds();
        if (const Command reply = database.execute(command); !reply.isSuccess())
            qFatal("the second process could not write: %d", reply.result());
        ++schedule.version;
        out << schedule.id << ' ' << schedule.name << ' ' << before << Qt::endl;
        // Not in step with the reader's polling.
        QThread::msleep(130 + (i * 37) % 70);
    }
    return 0;
}

void benchFeed(Report &report)
{
    QTemporaryDir folder;
    const QString file = newStore(folder, 1000);
    auto *storage = orvex::LocalStorage::instance();
    QHash<QString, qint64> seen; // by the name that a schedule got
    QObject::connect(storage, &orvex::LocalStorage::scheduleChanged, storage, [&](const QList<quint32> &ids) {
        const qint64 now = nowMicroseconds();
        for (const quint32 id : ids)
            seen.insert(storage->schedules().value(id).name, now);
    });

    store::StoreLink link;
    QEventLoop loop;
    QObject::connect(&link, &store::StoreLink::failed, [](const QString &text) { qFatal("%s", qPrintable(text)); });
    QObject::connect(&link, &store::StoreLink::changed, storage, &orvex::LocalStorage::apply);
    QObject::connect(&link, &store::StoreLink::opened, storage, [&](const orvex::StorageChange &snapshot) {
        storage->apply(snapshot);
        loop.quit();
    });
    link.open(store::StoreAddress::file(file));
    loop.exec();

    QProcess writer;
    writer.start(QCoreApplication::applicationFilePath(), {QStringLiteral("--feed-writer"), file});
    QObject::connect(&writer, QOverload<int, QProcess::ExitStatus>::of(&QProcess::finished), &loop,
                     [&loop] { QTimer::singleShot(500, &loop, &QEventLoop::quit); });
    loop.exec();
    link.close();

    QVector<double> delays;
    const auto lines = QString::fromUtf8(writer.readAllStandardOutput()).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    for (const QString &line : lines) {
        const QString name = line.section(QLatin1Char(' '), 1, -2);
        if (!seen.contains(name))
            qFatal("a change of the second process never arrived: %s", qPrintable(line));
        delays.append(double(seen.value(name) - line.section(QLatin1Char(' '), -1).toLongLong()) / 1000);
    }
    if (delays.size() != Changes)
        qFatal("the second process made %d changes instead of %d", delays.size(), Changes);
    report.atMost(QStringLiteral("a change by a second process stands in the client, median of 100"), median(delays),
                  110, QStringLiteral("ms"));
    report.tell(QStringLiteral("… the slowest of 100"), *std::max_element(delays.cbegin(), delays.cend()),
                QStringLiteral("ms"));
}

} // namespace bench
