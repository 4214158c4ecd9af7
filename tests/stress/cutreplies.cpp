#include "faultyio.h"
#include "stress.h"

#include <QElapsedTimer>
#include <QRandomGenerator>

#include <cerrno>

namespace stress {

namespace {

/// A client whose every request is cut off: before it arrives, somewhere on its way to the disk, or with its reply.
class CutOffClient
{
public:
    CutOffClient(const store::StoreAddress &address, const QString &folder)
        : m_address(address)
        , m_folder(folder)
    {
        require(m_database.open(m_address));
    }

    /// Sends \a command until an answer comes through, always under the same identifier.
    Command send(const Command &command)
    {
        const int how = m_random.bounded(100);
        if (how < 70) {
            (void)m_database.execute(command);
            ++repliesCut;
            if (how < 2)
                require(m_database.open(m_address));
        } else if (how < 95) {
            faultyio::fail(m_folder, m_random.bounded(2) ? EIO : ENOSPC, m_random.bounded(8), 1);
            (void)m_database.execute(command);
            tornInside += faultyio::failures() > 0;
            faultyio::heal();
            require(m_database.open(m_address));
        } else {
            ++neverArrived;
        }
        return m_database.execute(command);
    }

    int repliesCut = 0;
    int tornInside = 0;
    int neverArrived = 0;

private:
    store::StoreAddress m_address;
    QString m_folder;
    store::Database m_database;
    QRandomGenerator m_random{1703};
};

/// Between what the store holds and what was answered.
struct Differences
{
    int missing = 0;
    int doubled = 0;
    int misnamed = 0;
};

Differences differences(const orvex::ScheduleHash &schedules, const QHash<QString, qint32> &answered, int requests)
{
    QHash<QString, QList<qint32>> stored;
    for (const auto &record : schedules)
        stored[record.name].append(record.id);
    Differences found;
    for (int i = 0; i < requests; ++i) {
        const auto ids = stored.value(QString::number(i));
        found.missing += ids.isEmpty();
        found.doubled += ids.size() > 1;
        found.misnamed += ids.size() == 1 && ids.first() != answered.value(QString::number(i));
    }
    return found;
}

} // namespace

int cutReplies(const QStringList &arguments)
{
    const int requests = number(arguments, "--requests", 100000);
    QTemporaryDir folder;
    const auto address = newStore(folder);
    CutOffClient client(address, folder.path());
    QHash<QString, qint32> answered;
    int refused = 0;
    QElapsedTimer clock;
    clock.start();
    for (int i = 0; i < requests; ++i) {
        const QString name = QString::number(i);
        const Command reply = client.send(request(request::AddSchedule, schedule(name)));
        qint32 id = 0;
        if (reply.isSuccess() && readPayload(reply.payload(), id))
            answered.insert(name, id);
        else
            ++refused;
    }
    const double seconds = double(clock.elapsed()) / 1000;

    const Differences found = differences(schedules(address), answered, requests);
    const int broken = faults(address);
    print(QStringLiteral("%1 requests cut off (%2 at the reply, %3 on the way to the disk, %4 before they arrived) in "
                         "%5 s: refused %6, missing %7, doubled %8, answered with another's number %9, faults %10")
              .arg(requests)
              .arg(client.repliesCut)
              .arg(client.tornInside)
              .arg(client.neverArrived)
              .arg(seconds)
              .arg(refused)
              .arg(found.missing)
              .arg(found.doubled)
              .arg(found.misnamed)
              .arg(broken));
    return refused + found.missing + found.doubled + found.misnamed + broken == 0 && client.tornInside > 0 ? 0 : 1;
}

} // namespace stress
