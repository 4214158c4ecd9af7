#include "stress.h"

#include "storelink.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QRandomGenerator>
#include <QSocketNotifier>
#include <QTimer>

#include <memory>
#include <unistd.h>
#include <vector>

namespace stress {

namespace {

constexpr int SharedSchedules = 20;

/// A client that keeps one request running and its cache up to date, and tells at its end what it did and holds.
class Client : public QObject
{
public:
    Client(const store::StoreAddress &address, int number, int seconds)
        : m_number(number)
        , m_milliseconds(seconds * 1000)
        , m_random(quint32(number))
    {
        m_quiet.setSingleShot(true);
        m_quiet.setInterval(1500);
        connect(&m_quiet, &QTimer::timeout, this, &Client::tell);
        connect(&m_link, &store::StoreLink::failed, [](const QString &text) { qFatal("%s", qPrintable(text)); });
        connect(&m_link, &store::StoreLink::opened, this, [this](const orvex::StorageChange &all) {
            take(all);
            m_clock.start();
            next();
        });
        connect(&m_link, &store::StoreLink::changed, this, &Client::take);
        connect(&m_link, &store::StoreLink::replied, this, &Client::replied);
        m_link.open(address);
    }

private:
    void take(const orvex::StorageChange &change)
    {
        if (change.full)
            m_schedules = change.schedules;
        for (auto it = change.schedules.cbegin(); it != change.schedules.cend(); ++it)
            m_schedules.insert(it.key(), it.value());
        for (const quint32 id : change.removedSchedules)
            m_schedules.remove(id);
        // The cache is told when nothing has changed any more: the others have ended, too.
        if (m_ended)
            m_quiet.start();
    }

    void next()
    {
        if (m_clock.elapsed() > m_milliseconds) {
            m_ended = true;
            m_quiet.start();
            return;
        }
        const int what = m_random.bounded(10);
        m_shared = 0;
        m_removed = 0;
        if (what < 2) {
            m_added = true;
            submit(request(request::AddSchedule, schedule(QStringLiteral("%1:%2").arg(m_number).arg(m_count))));
        } else if (what < 3 && !m_own.isEmpty()) {
            m_removed = m_own.takeAt(m_random.bounded(m_own.size()));
            submit(request(request::RemoveSchedules, QList<quint32>{m_removed}));
        } else {
            m_shared = quint32(1 + m_random.bounded(SharedSchedules));
            auto record = m_schedules.value(m_shared);
            record.comment = QStringLiteral("%1:%2").arg(m_number).arg(m_count);
            submit(request(request::UpdateSchedule, record));
        }
    }

    void submit(const Command &command)
    {
        ++m_count;
        m_link.submit(command);
    }

    void replied(const Command &reply)
    {
        ++m_results[QString::number(reply.result())];
        if (reply.isSuccess()) {
            qint32 id = 0;
            if (m_added && readPayload(reply.payload(), id))
                m_own.append(quint32(id));
            if (m_shared != 0)
                ++m_updates[QString::number(m_shared)];
        } else if (m_removed != 0) {
            m_own.append(m_removed);
        }
        m_added = false;
        // Behind the change notice of this request.
        QTimer::singleShot(0, this, &Client::next);
    }

    void tell()
    {
        QJsonObject results;
        for (auto it = m_results.cbegin(); it != m_results.cend(); ++it)
            results.insert(it.key(), *it);
        QJsonObject updates;
        for (auto it = m_updates.cbegin(); it != m_updates.cend(); ++it)
            updates.insert(it.key(), *it);
        QJsonObject own;
        for (const quint32 id : qAsConst(m_own))
            own.insert(QString::number(id), true);
        print(QString::fromUtf8(
            QJsonDocument(QJsonObject{{QStringLiteral("results"), results},
                                      {QStringLiteral("updates"), updates},
                                      {QStringLiteral("own"), own},
                                      {QStringLiteral("cache"), QString::fromLatin1(digest(m_schedules))}})
                .toJson(QJsonDocument::Compact)));
        QCoreApplication::quit();
    }

    int m_number;
    int m_milliseconds;
    QRandomGenerator m_random;
    store::StoreLink m_link;
    orvex::ScheduleHash m_schedules;
    QElapsedTimer m_clock;
    QTimer m_quiet;
    bool m_ended = false;
    int m_count = 0;
    bool m_added = false; ///< by the running request
    quint32 m_shared = 0; ///< updated by the running request
    quint32 m_removed = 0; ///< by the running request
    QList<quint32> m_own; ///< added here, and acknowledged
    QHash<QString, int> m_results;
    QHash<QString, int> m_updates; ///< acknowledged ones, by schedule
};

/// What all clients together were told.
struct Sum
{
    QHash<QString, int> results;
    QHash<quint32, int> updates;
    QList<quint32> own;
    QStringList caches;

    void take(const QJsonObject &client)
    {
        const auto counts = client.value(QStringLiteral("results")).toObject();
        for (auto it = counts.begin(); it != counts.end(); ++it)
            results[it.key()] += it->toInt();
        const auto updated = client.value(QStringLiteral("updates")).toObject();
        for (auto it = updated.begin(); it != updated.end(); ++it)
            updates[it.key().toUInt()] += it->toInt();
        for (const QString &id : client.value(QStringLiteral("own")).toObject().keys())
            own.append(id.toUInt());
        caches.append(client.value(QStringLiteral("cache")).toString());
    }

    /// Acknowledged writes that the store does not show: every update raises its record's version by one.
    [[nodiscard]] int lostIn(const orvex::ScheduleHash &stored) const
    {
        int lost = 0;
        for (auto it = updates.cbegin(); it != updates.cend(); ++it)
            lost += std::abs(int(stored.value(it.key()).version) - 1 - *it);
        for (const quint32 id : own)
            lost += !stored.contains(id);
        return lost + std::abs(stored.size() - SharedSchedules - own.size());
    }
};

void addShared(const store::StoreAddress &address)
{
    store::Database database;
    require(database.open(address));
    for (int i = 0; i < SharedSchedules; ++i) {
        if (!database.execute(request(request::AddSchedule, schedule(QString::number(i)))).isSuccess())
            qFatal("no schedule to share");
    }
}

Sum runClients(const store::StoreAddress &address, int processes, int seconds)
{
    std::vector<std::unique_ptr<QProcess>> clients;
    for (int i = 0; i < processes; ++i) {
        clients.push_back(std::make_unique<QProcess>());
        clients.back()->setProcessChannelMode(QProcess::ForwardedErrorChannel);
        clients.back()->start(
            QCoreApplication::applicationFilePath(),
            {QStringLiteral("client"), address.filePath(), QString::number(i), QString::number(seconds)});
    }
    Sum sum;
    for (const auto &client : clients) {
        if (!client->waitForFinished((seconds + 120) * 1000) || client->exitCode() != 0)
            qFatal("a client did not end as it should");
        sum.take(QJsonDocument::fromJson(client->readAllStandardOutput()).object());
    }
    return sum;
}

} // namespace

int writeAndFollow(const QStringList &arguments)
{
    Client client(store::StoreAddress::file(arguments.value(0)), arguments.value(1).toInt(),
                  arguments.value(2).toInt());
    return QCoreApplication::exec();
}

int manyWriters(const QStringList &arguments)
{
    const int processes = number(arguments, "--processes", 4);
    const int seconds = number(arguments, "--seconds", 60);
    QTemporaryDir folder;
    const auto address = newStore(folder);
    addShared(address);
    const Sum sum = runClients(address, processes, seconds);
    const auto stored = schedules(address);
    const int lost = sum.lostIn(stored);
    const auto equal = sum.caches.count(QString::fromLatin1(digest(stored)));
    const int broken = faults(address);
    const int done = sum.results.value(QString::number(ResultSuccess));
    const int conflicts = sum.results.value(QString::number(ResultChangedMeanwhile));
    const int timeOuts = sum.results.value(QString::number(ResultNoConnection));
    int others = -done - conflicts - timeOuts;
    for (const int count : qAsConst(sum.results))
        others += count;
    print(
        QStringLiteral("%1 processes writing for %2 s: %3 changes, %4 per second, refused as stale %5, lock time-outs "
                       "%6, other failures %7, lost %8, caches equal to the store %9 of %1, faults %10")
            .arg(processes)
            .arg(seconds)
            .arg(done)
            .arg(done / seconds)
            .arg(conflicts)
            .arg(timeOuts)
            .arg(others)
            .arg(lost)
            .arg(equal)
            .arg(broken));
    return lost + others + timeOuts + broken == 0 && equal == processes && done > 0 ? 0 : 1;
}

} // namespace stress
