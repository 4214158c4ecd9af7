#include "bench_feed.h"

#include "localstorage.h"
#include "newstore.h"
#include "requests.h"
#include "schedulemodel.h"
#include "scheduleview.h"
#include "storelink.h"
#include "tqdatastream.h"
#include "tqserverinterface.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QProcess>
#include <QTextStream>
#include <QThread>
#include <QTimer>

#include <algorithm>
#include <chrono>

namespace {

constexpr int Changes = 100;

/// A clock that all processes of this machine share.
qint64 nowMicroseconds()
{
    using namespace std::chrono;
    return duration_cast<microseconds>(steady_clock::now().time_since_epoch()).count();
}

QString newStoreOf(const QTemporaryDir &folder, int schedules)
{
    const auto fill = [schedules](store::BulkWriter &writer) {
        for (int i = 0; i < schedules; ++i) {
            orvex::SCHEDULE_DATA schedule;
            schedule.name = QStringLiteral("График %1").arg(i);
            schedule.type = orvex::ScheduleFree;
            writer.addSchedule(schedule);
        }
    };
    return bench::newStore(folder, fill).filePath();
}

/// A client from the store to the list.
class ListClient
{
public:
    void open(const QString &file)
    {
        auto *storage = orvex::LocalStorage::instance();
        QEventLoop loop;
        QObject::connect(&m_link, &store::StoreLink::failed,
                         [](const QString &text) { qFatal("%s", qPrintable(text)); });
        QObject::connect(&m_link, &store::StoreLink::changed, storage, &orvex::LocalStorage::apply);
        QObject::connect(&m_link, &store::StoreLink::opened, &loop, [&](const orvex::StorageChange &snapshot) {
            storage->apply(snapshot);
            loop.quit();
        });
        m_link.open(store::StoreAddress::file(file));
        loop.exec();

        m_view.init(&m_server, QStringLiteral("scheduleview"));
        m_view.insertedToInterface();
        // Connected after the page, so its list already has the change in this slot.
        QObject::connect(storage, &orvex::LocalStorage::scheduleChanged, &m_view,
                         [this](const QList<quint32> &ids) { recordArrival(ids); });
    }

    /// Milliseconds from each change of the writer to its row; \a printed is the output of the writer.
    [[nodiscard]] QVector<double> delays(const QString &printed) const
    {
        QVector<double> delays;
        for (const QString &line : printed.split(QLatin1Char('\n'), Qt::SkipEmptyParts)) {
            const QString name = line.section(QLatin1Char(' '), 1, -2);
            if (!m_arrivals.contains(name))
                qFatal("a change of the second process never arrived: %s", qPrintable(line));
            delays.append(double(m_arrivals.value(name) - line.section(QLatin1Char(' '), -1).toLongLong()) / 1000);
        }
        if (delays.size() != Changes)
            qFatal("the second process made %d changes instead of %d", delays.size(), Changes);
        return delays;
    }

private:
    void recordArrival(const QList<quint32> &ids)
    {
        const qint64 now = nowMicroseconds();
        const auto *list = m_view.findChild<ScheduleModel *>();
        for (const quint32 id : ids)
            m_arrivals.insert(list->record(list->row(int(id))).name, now);
    }

    TQServerInterface m_server;
    ScheduleView m_view;
    store::StoreLink m_link;
    QHash<QString, qint64> m_arrivals; ///< arrival time by the new name of a row
};

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
        // Irregular, so that the changes do not coincide with the reader's polling.
        QThread::msleep(130 + (i * 37) % 70);
    }
    return 0;
}

void benchFeed(Report &report)
{
    QTemporaryDir folder;
    const QString file = newStoreOf(folder, 1000);
    ListClient client;
    client.open(file);

    QProcess writer;
    writer.start(QCoreApplication::applicationFilePath(), {QStringLiteral("--feed-writer"), file});
    QEventLoop loop;
    QObject::connect(&writer, QOverload<int, QProcess::ExitStatus>::of(&QProcess::finished), &loop,
                     [&loop] { QTimer::singleShot(500, &loop, &QEventLoop::quit); });
    loop.exec();

    const auto delays = client.delays(QString::fromUtf8(writer.readAllStandardOutput()));
    report.atMost(QStringLiteral("a change by a second process shown in the list, median of 100"), median(delays), 110,
                  QStringLiteral("ms"));
    report.add(QStringLiteral("… the slowest of 100"), *std::max_element(delays.cbegin(), delays.cend()),
               QStringLiteral("ms"));
}

} // namespace bench
