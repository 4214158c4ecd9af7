#include "faultyio.h"
#include "stress.h"

#include <QElapsedTimer>
#include <QRandomGenerator>

#include <cerrno>

using namespace support;

namespace stress {

namespace {

/// A client whose requests are all interrupted: before they arrive, while they are written, or before the reply
/// arrives.
class InterruptedClient
{
public:
    InterruptedClient(const store::StoreAddress &address, const QString &folder)
        : m_address(address)
        , m_folder(folder)
    {
        require(m_database.open(m_address));
    }

    /// Sends \a command with an interruption, then again under the same identifier.
    Command send(const Command &command)
    {
        const int how = m_random.bounded(100);
        if (how < 70) {
            (void)m_database.execute(command);
            ++lostReplies;
            if (how < 2)
                require(m_database.open(m_address));
        } else if (how < 95) {
            faultyio::fail(m_folder, m_random.bounded(2) ? EIO : ENOSPC, m_random.bounded(8), 1);
            (void)m_database.execute(command);
            failedWrites += faultyio::failures() > 0;
            faultyio::reset();
            require(m_database.open(m_address));
        } else {
            ++lostRequests;
        }
        return m_database.execute(command);
    }

    int lostReplies = 0;
    int failedWrites = 0;
    int lostRequests = 0;

private:
    store::StoreAddress m_address;
    QString m_folder;
    store::Database m_database;
    QRandomGenerator m_random{1703};
};

/// Differences between the stored records and the replies.
struct Differences
{
    int missing = 0;
    int duplicate = 0;
    int wrongId = 0;
};

Differences differences(const orvex::ScheduleHash &schedules, const QHash<QString, qint32> &replies, int requests)
{
    QHash<QString, QList<qint32>> stored;
    for (const auto &record : schedules)
        stored[record.name].append(record.id);
    Differences found;
    for (int i = 0; i < requests; ++i) {
        const auto ids = stored.value(QString::number(i));
        found.missing += ids.isEmpty();
        found.duplicate += ids.size() > 1;
        found.wrongId += ids.size() == 1 && ids.first() != replies.value(QString::number(i));
    }
    return found;
}

} // namespace

int interruptRequests(const QStringList &arguments)
{
    const int requests = number(arguments, "--requests", 100000);
    QTemporaryDir folder;
    const auto address = newStore(folder);
    InterruptedClient client(address, folder.path());
    QHash<QString, qint32> replies;
    int refused = 0;
    QElapsedTimer clock;
    clock.start();
    for (int i = 0; i < requests; ++i) {
        const QString name = QString::number(i);
        const Command reply = client.send(storeRequest(request::AddSchedule, newSchedule(name)));
        qint32 id = 0;
        if (reply.isSuccess() && readPayload(reply.payload(), id))
            replies.insert(name, id);
        else
            ++refused;
    }
    const double seconds = double(clock.elapsed()) / 1000;

    const Differences found = differences(schedules(address), replies, requests);
    const int faults = countFaults(address);
    print(QStringLiteral(
              "%1 requests interrupted (%2 before the reply, %3 while writing, %4 before they arrived) in %5 s: "
              "refused %6, missing %7, duplicate %8, wrong identifier %9, faults %10")
              .arg(requests)
              .arg(client.lostReplies)
              .arg(client.failedWrites)
              .arg(client.lostRequests)
              .arg(seconds)
              .arg(refused)
              .arg(found.missing)
              .arg(found.duplicate)
              .arg(found.wrongId)
              .arg(faults));
    return refused + found.missing + found.duplicate + found.wrongId + faults == 0 && client.failedWrites > 0 ? 0 : 1;
}

} // namespace stress
