#include "stress.h"

#include <QCoreApplication>
#include <QProcess>
#include <QRandomGenerator>
#include <QThread>

#include <cstdio>
#include <cstdlib>
#include <iterator>

using namespace support;

namespace stress {

namespace {

void acknowledge(const QString &line)
{
    std::fputs(qPrintable(line + QLatin1Char('\n')), stdout);
    std::fflush(stdout);
}

/// The writes that the store has acknowledged to the killed clients.
struct AcknowledgedWrites
{
    struct State
    {
        qint64 version = 0;
        QString name;
        bool removed = false;
    };
    QHash<quint32, State> states;
    qint64 writes = 0;

    void add(const QString &line)
    {
        const QStringList parts = line.split(QLatin1Char(' '));
        if (parts.size() != 3)
            return; // the client was killed while it printed the line
        ++writes;
        states[parts.at(0).toUInt()] = {parts.at(1).toLongLong(), parts.at(2), parts.at(1) == QLatin1String("-1")};
    }

    /// The number of lost ones. The write that was running may have been done, too.
    [[nodiscard]] int lostIn(const orvex::ScheduleHash &stored) const
    {
        int lost = 0;
        for (auto it = states.cbegin(); it != states.cend(); ++it) {
            const auto record = stored.value(it.key());
            const bool isLast = record.version == it->version && record.name == it->name;
            const bool isNext = record.version == it->version + 1 || record.version == 0;
            lost += it->removed ? record.version != 0 : !(isLast || isNext);
        }
        return lost;
    }
    /// Takes the stored state, with the result of the write that was running, as the start of the next client.
    void resetTo(const orvex::ScheduleHash &stored)
    {
        for (auto it = states.begin(); it != states.end(); ++it) {
            const auto record = stored.value(it.key());
            *it = {record.version, record.name, !stored.contains(it.key())};
        }
    }
};

} // namespace

int writeUntilKilled(const QStringList &arguments)
{
    store::Database database;
    orvex::StorageChange all;
    require(database.open(store::StoreAddress::file(arguments.value(0))));
    require(database.snapshot(all));
    const auto run = [&database](const QString &name, const auto &value) {
        const Command reply = database.execute(storeRequest(name, value));
        if (!reply.isSuccess())
            std::exit(1);
        return reply;
    };
    QRandomGenerator random(arguments.value(1).toUInt());
    for (int i = 0;; ++i) {
        const int what = all.schedules.isEmpty() ? 0 : random.bounded(10);
        auto record = newSchedule(QStringLiteral("%1-%2").arg(arguments.value(1)).arg(i));
        if (what >= 3)
            record = *std::next(all.schedules.cbegin(), random.bounded(all.schedules.size()));
        const auto id = quint32(record.id);
        if (what < 3) {
            if (!readPayload(run(request::AddSchedule, record).payload(), record.id))
                return 1;
            record.version = 1;
        } else if (what < 9) {
            record.name = record.name.left(200) + QLatin1Char(char('a' + i % 26));
            run(request::UpdateSchedule, record);
            ++record.version;
        } else {
            run(request::RemoveSchedules, QList<quint32>{id});
            all.schedules.remove(id);
            record.version = -1;
        }
        if (record.version > 0)
            all.schedules.insert(quint32(record.id), record);
        acknowledge(QStringLiteral("%1 %2 %3").arg(record.id).arg(record.version).arg(record.name));
    }
}

int killWriters(const QStringList &arguments)
{
    const int times = number(arguments, "--times", 100);
    QTemporaryDir folder;
    const auto address = newStore(folder);
    AcknowledgedWrites acknowledged;
    int lost = 0;
    int faults = 0;
    for (int i = 0; i < times; ++i) {
        QProcess writer;
        writer.start(QCoreApplication::applicationFilePath(),
                     {QStringLiteral("writer"), address.filePath(), QString::number(i)});
        if (!writer.waitForReadyRead(30000))
            qFatal("the writer has not written anything: %s", writer.readAllStandardError().constData());
        QThread::usleep(QRandomGenerator::global()->bounded(150000));
        writer.kill();
        writer.waitForFinished();
        if (writer.exitStatus() != QProcess::CrashExit)
            qFatal("the writer ended by itself");
        const auto lines = QString::fromUtf8(writer.readAllStandardOutput()).split(QLatin1Char('\n'));
        // The last line is incomplete.
        for (int line = 0; line + 1 < lines.size(); ++line)
            acknowledged.add(lines.at(line));
        faults += countFaults(address);
        const auto stored = snapshotOf(address.filePath()).schedules;
        lost += acknowledged.lostIn(stored);
        acknowledged.resetTo(stored);
    }
    printFigures("kill -9 of a writing client",
                 {{"times", times}, {"acknowledged writes", acknowledged.writes}, {"lost", lost}, {"faults", faults}});
    return lost == 0 && faults == 0 && acknowledged.writes > times ? 0 : 1;
}

} // namespace stress
