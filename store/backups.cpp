#include "backups.h"

#include "database.h"
#include "log.h"
#include "newfile.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QThread>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <memory>
#include <mutex>
#include <vector>

namespace store::backups {

namespace {

void removeFile(const QString &path)
{
    QFile file(path);
    // Another client may have removed it meanwhile.
    if (!file.remove() && file.exists())
        qCWarning(storeLog) << "an old backup cannot be removed:" << path << file.errorString();
}

void removeOldest(const StoreAddress &address, const QDate &today)
{
    const QDir dir(folder(address));
    QList<QPair<QDate, QString>> copies;
    for (const QString &name : dir.entryList(QDir::Files)) {
        if (const QDate date = dateOfDaily(address, name); date.isValid())
            copies.append({date, name});
    }
    // Copies dated in the future, by a clock that was wrong, are removed first.
    const auto isRemovedFirst = [today](const auto &a, const auto &b) {
        return (a.first > today) != (b.first > today) ? a.first > today : a.first < b.first;
    };
    std::sort(copies.begin(), copies.end(), isRemovedFirst);
    while (copies.size() > Kept)
        removeFile(dir.filePath(copies.takeFirst().second));
}

/// Files of copies that were interrupted.
void removeUnfinished(const StoreAddress &address, const QDateTime &now)
{
    const QDir dir(folder(address));
    for (const QFileInfo &file : dir.entryInfoList({NewFile::partialPattern()}, QDir::Files)) {
        const std::chrono::seconds age(std::abs(file.lastModified().secsTo(now)));
        if (age > std::chrono::hours(24))
            removeFile(file.filePath());
    }
}

/// The copies that are being made in this process. Only the end of the program waits for them.
class RunningBackups
{
public:
    void start(std::unique_ptr<QThread> thread)
    {
        const std::lock_guard lock(m_mutex);
        const auto ended = [](const auto &other) { return other->isFinished() && other->wait(); };
        m_threads.erase(std::remove_if(m_threads.begin(), m_threads.end(), ended), m_threads.end());
        thread->start(QThread::LowPriority);
        m_threads.push_back(std::move(thread));
    }

    static RunningBackups &instance()
    {
        static RunningBackups running;
        return running;
    }

private:
    RunningBackups() { qAddPostRoutine(waitForAll); }

    static void waitForAll()
    {
        const std::lock_guard lock(instance().m_mutex);
        for (const auto &thread : instance().m_threads)
            thread->wait();
        instance().m_threads.clear();
    }

    std::mutex m_mutex;
    std::vector<std::unique_ptr<QThread>> m_threads;
};

} // namespace

void startDaily(const StoreAddress &address, const QDateTime &now, QObject *context,
                const std::function<void(const Outcome &)> &ended)
{
    const auto outcome = std::make_shared<Outcome>();
    std::unique_ptr<QThread> thread(QThread::create([outcome, address, now] { *outcome = makeDaily(address, now); }));
    QObject::connect(thread.get(), &QThread::finished, context, [outcome, ended] { ended(*outcome); });
    RunningBackups::instance().start(std::move(thread));
}

Outcome makeDaily(const StoreAddress &address, const QDateTime &now)
{
    const QString name = dailyName(address, now);
    if (QFileInfo::exists(name))
        return {};
    if (Outcome made = makeFolder(folder(address)); !made.ok())
        return made;
    removeUnfinished(address, now);
    Outcome copied = Database::backUp(address, name);
    // Another client may have made the copy meanwhile.
    if (!copied.ok() && !QFileInfo::exists(name))
        return copied;
    removeOldest(address, now.toLocalTime().date());
    return {};
}

} // namespace store::backups
