#include "faultyio.h"
#include "stress.h"

#include <QDir>
#include <QFile>
#include <QRandomGenerator>
#include <QSet>

#include <algorithm>

using namespace support;

namespace stress {

namespace {

using faultyio::Operation;

constexpr int SectorSize = 512;

/// The contents of a disk after a power failure: what was synced, and of the rest nothing or some of the sectors.
class Disk
{
public:
    explicit Disk(const QString &folder)
    {
        for (const QFileInfo &file : QDir(folder).entryInfoList(QDir::Files)) {
            QFile content(file.filePath());
            if (!file.fileName().endsWith(QLatin1String("-shm")) && content.open(QIODevice::ReadOnly))
                m_synced.insert(file.fileName(), content.readAll());
        }
    }

    void add(const Operation &operation, bool ignoreSyncs)
    {
        if (operation.kind == Operation::Mark)
            return;
        if (operation.kind != Operation::Sync) {
            m_pending.append(operation);
            return;
        }
        if (ignoreSyncs)
            return;
        QVector<Operation> others;
        for (const Operation &pending : qAsConst(m_pending)) {
            if (pending.file == operation.file)
                apply(pending, m_synced);
            else
                others.append(pending);
        }
        m_pending = others;
    }

    /// Writes the remaining contents into \a folder; with \a random, includes some unsynced sectors.
    void write(const QString &folder, QRandomGenerator *random) const
    {
        auto files = m_synced;
        for (const Operation &pending : m_pending) {
            if (random && random->bounded(2))
                applySomeSectors(pending, files, *random);
        }
        for (auto it = files.cbegin(); it != files.cend(); ++it) {
            QFile file(QDir(folder).filePath(it.key()));
            if (!file.open(QIODevice::WriteOnly) || file.write(*it) != it->size())
                qFatal("%s cannot be written", qPrintable(file.fileName()));
        }
    }

private:
    using Files = QHash<QString, QByteArray>;

    static void apply(const Operation &operation, Files &files)
    {
        QByteArray &content = files[operation.file];
        if (operation.kind == Operation::Truncate) {
            content.truncate(int(operation.offset));
            return;
        }
        const int end = int(operation.offset) + operation.bytes.size();
        if (content.size() < end)
            content.append(QByteArray(end - content.size(), '\0'));
        content.replace(int(operation.offset), operation.bytes.size(), operation.bytes);
    }

    static void applySomeSectors(const Operation &operation, Files &files, QRandomGenerator &random)
    {
        if (operation.kind != Operation::Write || operation.bytes.size() <= SectorSize) {
            apply(operation, files);
            return;
        }
        for (int at = 0; at < operation.bytes.size(); at += SectorSize) {
            if (random.bounded(4))
                apply({Operation::Write, operation.file, operation.offset + at, operation.bytes.mid(at, SectorSize)},
                      files);
        }
    }

    Files m_synced;
    QVector<Operation> m_pending;
};

/// Adds \a count schedules and marks each one that is acknowledged.
QVector<Operation> recordWrites(const store::StoreAddress &address, const QString &folder, int count)
{
    store::Database database;
    require(database.open(address));
    faultyio::startRecording(folder);
    for (int i = 0; i < count; ++i) {
        if (!database.execute(storeRequest(request::AddSchedule, newSchedule(QString::number(i)))).isSuccess())
            qFatal("request %d fails", i);
        faultyio::mark(i);
    }
    return faultyio::stopRecording();
}

/// The number of missing schedules among the first \a acknowledged ones; all of them if the store cannot be opened.
int countMissing(const QString &folder, int acknowledged, int &faults, bool isControl)
{
    const auto address = store::StoreAddress::file(QDir(folder).filePath(QStringLiteral("store.db")));
    store::Database database;
    orvex::StorageChange all;
    if (!database.open(address).ok() || !database.snapshot(all).ok()) {
        ++faults;
        return acknowledged;
    }
    database.close();
    faults += isControl ? 0 : countFaults(address);
    QSet<QString> names;
    for (const auto &record : qAsConst(all.schedules))
        names.insert(record.name);
    int count = 0;
    for (int i = 0; i < acknowledged; ++i)
        count += !names.contains(QString::number(i));
    return count;
}

struct Damage
{
    qint64 lost = 0;
    int faults = 0;
};

/// Cuts the power at \a points random places in \a operations. \a disk has the contents before them.
Damage cutAtRandom(const QVector<Operation> &operations, Disk disk, int points, bool ignoreSyncs)
{
    QRandomGenerator generator(4711);
    QVector<int> cuts(points);
    std::generate(cuts.begin(), cuts.end(), [&] { return generator.bounded(operations.size() + 1); });
    std::sort(cuts.begin(), cuts.end());
    Damage damage;
    int done = 0;
    int acknowledged = 0;
    for (const int cut : qAsConst(cuts)) {
        for (; done < cut; ++done) {
            const Operation &operation = operations.at(done);
            disk.add(operation, ignoreSyncs);
            acknowledged = operation.kind == Operation::Mark ? int(operation.offset) + 1 : acknowledged;
        }
        for (QRandomGenerator *random : {static_cast<QRandomGenerator *>(nullptr), &generator}) {
            QTemporaryDir after;
            disk.write(after.path(), random);
            damage.lost += countMissing(after.path(), acknowledged, damage.faults, ignoreSyncs);
        }
    }
    return damage;
}

} // namespace

int cutPower(const QStringList &arguments)
{
    const int points = number(arguments, "--points", 200);
    const int requests = number(arguments, "--requests", 600);
    // The control: with a disk that ignores syncs, the experiment must find losses.
    const bool ignoreSyncs = arguments.contains(QLatin1String("--ignore-syncs"));
    QTemporaryDir folder;
    const auto address = newStore(folder);
    const Disk disk(folder.path());
    const QVector<Operation> operations = recordWrites(address, folder.path(), requests);
    const auto count = [&operations](Operation::Kind kind, const char *file) {
        return std::count_if(operations.cbegin(), operations.cend(), [kind, file](const Operation &o) {
            return o.kind == kind && o.file.endsWith(QLatin1String(file));
        });
    };
    const auto syncs = count(Operation::Sync, "-wal");
    if (syncs < requests)
        qFatal("the syncs of the log do not pass through the recorded disk");

    const Damage damage = cutAtRandom(operations, disk, points, ignoreSyncs);
    // At each point, the disk has none or some of the unsynced sectors.
    printFigures("power cut",
                 {{"points", points},
                  {"requests", requests},
                  {"writes", count(Operation::Write, "")},
                  {"syncs of the log", syncs},
                  {"syncs of the file", count(Operation::Sync, ".db")},
                  {"lost", damage.lost},
                  {"faults", damage.faults}});
    return ignoreSyncs == (damage.lost > 0) && (ignoreSyncs || damage.faults == 0) ? 0 : 1;
}

} // namespace stress
