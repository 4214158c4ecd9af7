#include "faultyio.h"
#include "stress.h"

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

} // namespace

int interruptRequests(const QStringList &arguments)
{
    const int requests = number(arguments, "--requests", 100000);
    QTemporaryDir folder;
    const auto address = newStore(folder);
    InterruptedClient client(address, folder.path());
    QHash<QString, QList<qint32>> replied;
    for (int i = 0; i < requests; ++i) {
        const QString name = QString::number(i);
        const Command reply = client.send(storeRequest(request::AddSchedule, newSchedule(name)));
        qint32 id = 0;
        if (reply.isSuccess() && readPayload(reply.payload(), id))
            replied[name].append(id);
    }
    QHash<QString, QList<qint32>> stored;
    for (const auto &record : snapshotOf(address.filePath()).schedules)
        stored[record.name].append(record.id);
    // A difference is a refused request, a missing or duplicate record, or a wrong identifier in the reply.
    int different = 0;
    for (int i = 0; i < requests; ++i)
        different += stored.value(QString::number(i), {0}) != replied.value(QString::number(i));

    const int faults = countFaults(address);
    printFigures("interrupted requests",
                 {{"all", requests},
                  {"before the reply", client.lostReplies},
                  {"while writing", client.failedWrites},
                  {"before they arrived", client.lostRequests},
                  {"with another result", different},
                  {"faults", faults}});
    return different + faults == 0 && client.failedWrites > 0 ? 0 : 1;
}

} // namespace stress
