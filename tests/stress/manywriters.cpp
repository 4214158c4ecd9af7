#include "stress.h"

#include "storelink.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QProcess>
#include <QRandomGenerator>
#include <QTimer>

#include <cstdlib>
#include <functional>
#include <memory>
#include <numeric>
#include <vector>

using namespace support;

namespace stress {

namespace {

constexpr int SharedSchedules = 20;

/// What clients have done and what their caches contain in the end.
struct Result
{
    QHash<qint32, qint32> replies; ///< number of replies by result code
    QHash<quint32, qint32> updates; ///< number of acknowledged updates by schedule
    QList<quint32> added; ///< acknowledged schedules that were not removed again
    QList<QByteArray> caches; ///< checksums

    [[nodiscard]] QByteArray payload() const { return writePayload(replies, updates, added, caches); }
    void add(const QByteArray &payload)
    {
        Result client;
        if (!readPayload(payload, client.replies, client.updates, client.added, client.caches))
            qFatal("the result of a client cannot be read");
        for (auto it = client.replies.cbegin(); it != client.replies.cend(); ++it)
            replies[it.key()] += *it;
        for (auto it = client.updates.cbegin(); it != client.updates.cend(); ++it)
            updates[it.key()] += *it;
        added += client.added;
        caches += client.caches;
    }

    /// The number of acknowledged writes that are not stored. Every update raises the version of its record by one.
    [[nodiscard]] int lostIn(const orvex::ScheduleHash &stored) const
    {
        int lost = 0;
        for (auto it = updates.cbegin(); it != updates.cend(); ++it)
            lost += std::abs(int(stored.value(it.key()).version) - 1 - *it);
        for (const quint32 id : added)
            lost += !stored.contains(id);
        return lost + std::abs(stored.size() - SharedSchedules - added.size());
    }
};

/// A client that always has one request running and keeps its cache up to date. Prints its result in the end.
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
        connect(&m_quiet, &QTimer::timeout, this, &Client::printResult);
        connect(&m_link, &store::StoreLink::failed, this, [](const QString &text) { qFatal("%s", qPrintable(text)); });
        connect(&m_link, &store::StoreLink::opened, this, [this](const orvex::StorageChange &all) {
            apply(all);
            m_clock.start();
            next();
        });
        connect(&m_link, &store::StoreLink::changed, this, &Client::apply);
        connect(&m_link, &store::StoreLink::replied, this, &Client::countReply);
        m_link.open(address);
    }

private:
    void apply(const orvex::StorageChange &change)
    {
        if (change.full)
            m_schedules = change.schedules;
        for (auto it = change.schedules.cbegin(); it != change.schedules.cend(); ++it)
            m_schedules.insert(it.key(), it.value());
        for (const quint32 id : change.removedSchedules)
            m_schedules.remove(id);
        // The result is complete when there are no more changes, because the other clients have ended, too.
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
        const QString text = QStringLiteral("%1:%2").arg(m_number).arg(++m_count);
        if (what < 2) {
            submit(storeRequest(request::AddSchedule, newSchedule(text)), [this](const Command &reply) {
                qint32 id = 0;
                if (reply.isSuccess() && readPayload(reply.payload(), id))
                    m_result.added.append(quint32(id));
            });
        } else if (what < 3 && !m_result.added.isEmpty()) {
            const quint32 id = m_result.added.takeAt(m_random.bounded(m_result.added.size()));
            submit(storeRequest(request::RemoveSchedules, QList<quint32>{id}), [this, id](const Command &reply) {
                if (!reply.isSuccess())
                    m_result.added.append(id);
            });
        } else {
            const auto id = quint32(1 + m_random.bounded(SharedSchedules));
            auto record = m_schedules.value(id);
            record.comment = text;
            submit(storeRequest(request::UpdateSchedule, record),
                   [this, id](const Command &reply) { m_result.updates[id] += reply.isSuccess(); });
        }
    }

    void submit(const Command &command, const std::function<void(const Command &)> &replied)
    {
        m_replied = replied;
        m_link.submit(command);
    }

    void countReply(const Command &reply)
    {
        ++m_result.replies[reply.result()];
        m_replied(reply);
        // After the change of this request has been delivered.
        QTimer::singleShot(0, this, &Client::next);
    }

    void printResult()
    {
        m_result.caches = {digest(m_schedules)};
        print(QString::fromLatin1(m_result.payload().toBase64()));
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
    std::function<void(const Command &)> m_replied; ///< handles the reply to the running request
    Result m_result;
};

void addShared(const store::StoreAddress &address)
{
    store::Database database;
    require(database.open(address));
    for (int i = 0; i < SharedSchedules; ++i) {
        if (!database.execute(storeRequest(request::AddSchedule, newSchedule(QString::number(i)))).isSuccess())
            qFatal("a shared schedule cannot be added");
    }
}

Result runClients(const store::StoreAddress &address, int processes, int seconds)
{
    std::vector<std::unique_ptr<QProcess>> clients;
    for (int i = 0; i < processes; ++i) {
        clients.push_back(std::make_unique<QProcess>());
        clients.back()->setProcessChannelMode(QProcess::ForwardedErrorChannel);
        clients.back()->start(
            QCoreApplication::applicationFilePath(),
            {QStringLiteral("client"), address.filePath(), QString::number(i), QString::number(seconds)});
    }
    Result sum;
    for (const auto &client : clients) {
        if (!client->waitForFinished((seconds + 120) * 1000) || client->exitCode() != 0)
            qFatal("a client has failed");
        sum.add(QByteArray::fromBase64(client->readAllStandardOutput()));
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

int runManyWriters(const QStringList &arguments)
{
    const int processes = number(arguments, "--processes", 4);
    const int seconds = number(arguments, "--seconds", 60);
    QTemporaryDir folder;
    const auto address = newStore(folder);
    addShared(address);
    const Result sum = runClients(address, processes, seconds);
    const auto stored = snapshotOf(address.filePath()).schedules;
    const int lost = sum.lostIn(stored);
    const auto equal = sum.caches.count(digest(stored));
    const int faults = countFaults(address);
    const int done = sum.replies.value(ResultSuccess);
    const int conflicts = sum.replies.value(ResultChangedMeanwhile);
    const auto counts = sum.replies.values();
    const int others = std::accumulate(counts.cbegin(), counts.cend(), -done - conflicts);
    printFigures("writing processes",
                 {{"all", processes},
                  {"seconds", seconds},
                  {"changes", done},
                  {"refused as stale", conflicts},
                  {"other failures", others},
                  {"lost", lost},
                  {"caches equal to the store", equal},
                  {"faults", faults}});
    return lost + others + faults == 0 && equal == processes && done > 0 ? 0 : 1;
}

} // namespace stress
