#include "stress.h"

#include <QCoreApplication>
#include <QProcess>
#include <QRandomGenerator>
#include <QThread>

#include <cstdio>

namespace stress {

namespace {

void acknowledge(const QString &line)
{
    std::fputs(qPrintable(line + QLatin1Char('\n')), stdout);
    std::fflush(stdout);
}

/// What the killed clients were told is done.
struct Acknowledged
{
    struct State
    {
        qint64 version = 0;
        QString name;
        bool removed = false;
    };
    QHash<quint32, State> states;
    qint64 writes = 0;

    void take(const QString &line)
    {
        const QStringList parts = line.split(QLatin1Char(' '));
        if (parts.size() != 3)
            return; // the killed one was in the middle of a line
        ++writes;
        states[parts.at(0).toUInt()] = {parts.at(1).toLongLong(), parts.at(2), parts.at(1) == QLatin1String("-1")};
    }

    /// How many of them the store does not hold. The write that was running may have been done, too.
    [[nodiscard]] int lostIn(const orvex::ScheduleHash &stored) const
    {
        int lost = 0;
        for (auto it = states.cbegin(); it != states.cend(); ++it) {
            const bool isThere = stored.contains(it.key());
            const auto record = stored.value(it.key());
            const bool isLast = record.version == it->version && record.name == it->name;
            const bool isNext = record.version == it->version + 1 || !isThere;
            lost += it->removed ? isThere : !(isLast || isNext);
        }
        return lost;
    }
    /// What may have been done by the write that was running is what the next client goes on from.
    void goOnFrom(const orvex::ScheduleHash &stored)
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
    auto records = all.schedules.values();
    QRandomGenerator random(arguments.value(1).toUInt());
    for (int i = 0;; ++i) {
        const int what = records.isEmpty() ? 0 : random.bounded(10);
        auto record = records.value(records.isEmpty() ? 0 : random.bounded(records.size()));
        if (what < 3) {
            record = schedule(QStringLiteral("%1-%2").arg(arguments.value(1)).arg(i));
            qint32 id = 0;
            const Command reply = database.execute(request(request::AddSchedule, record));
            if (!reply.isSuccess() || !readPayload(reply.payload(), id))
                return 1;
            record.id = id;
            record.version = 1;
            record.state = orvex::ScheduleStateActive;
            records.append(record);
        } else if (what < 9) {
            record.name += QLatin1Char(char('a' + i % 26));
            if (record.name.size() > 200)
                record.name = QStringLiteral("short");
            if (!database.execute(request(request::UpdateSchedule, record)).isSuccess())
                return 1;
            ++record.version;
            for (auto &known : records)
                known = known.id == record.id ? record : known;
        } else {
            const QList<quint32> ids{quint32(record.id)};
            if (!database.execute(request(request::RemoveSchedules, ids)).isSuccess())
                return 1;
            records.removeAll(record);
            record.version = -1;
        }
        acknowledge(QStringLiteral("%1 %2 %3").arg(record.id).arg(record.version).arg(record.name));
    }
}

int killWriters(const QStringList &arguments)
{
    const int times = number(arguments, "--times", 100);
    QTemporaryDir folder;
    const auto address = newStore(folder);
    Acknowledged acknowledged;
    int lost = 0;
    int broken = 0;
    for (int i = 0; i < times; ++i) {
        QProcess writer;
        writer.start(QCoreApplication::applicationFilePath(),
                     {QStringLiteral("writer"), address.filePath(), QString::number(i)});
        if (!writer.waitForReadyRead(30000))
            qFatal("the writer writes nothing: %s", writer.readAllStandardError().constData());
        QThread::usleep(QRandomGenerator::global()->bounded(150000));
        writer.kill();
        writer.waitForFinished();
        if (writer.exitStatus() != QProcess::CrashExit)
            qFatal("the writer ended by itself");
        const auto lines = QString::fromUtf8(writer.readAllStandardOutput()).split(QLatin1Char('\n'));
        // Without its line end the last one may be half a line.
        for (int line = 0; line + 1 < lines.size(); ++line)
            acknowledged.take(lines.at(line));
        broken += faults(address);
        const auto stored = schedules(address);
        lost += acknowledged.lostIn(stored);
        acknowledged.goOnFrom(stored);
    }
    print(QStringLiteral("kill -9 of a writing client: %1 times, acknowledged writes %2, lost %3, faults %4")
              .arg(times)
              .arg(acknowledged.writes)
              .arg(lost)
              .arg(broken));
    return lost == 0 && broken == 0 && acknowledged.writes > times ? 0 : 1;
}

} // namespace stress
