#include "localstorage.h"

#include "objecttreemodel.h"
#include "storagechange.h"

#include <QCryptographicHash>

#include <utility>

namespace orvex {

namespace {

/// The keys of \a old that are not in \a next.
template <class Hash, class Next> QList<quint32> missingKeys(const Hash &old, const Next &next)
{
    QList<quint32> missing;
    for (auto it = old.constKeyValueBegin(); it != old.constKeyValueEnd(); ++it) {
        if (!next.contains((*it).first))
            missing.append((*it).first);
    }
    return missing;
}

/// Those of \a ids that are in \a hash.
template <class Hash> QList<quint32> knownKeys(const Hash &hash, const QList<quint32> &ids)
{
    QList<quint32> known;
    for (const quint32 id : ids) {
        if (hash.contains(id))
            known.append(id);
    }
    return known;
}

/// The keys of \a next whose values are new or differ from \a old. Compares whole values: another store or a restored
/// copy may have the same versions with other contents.
template <class Hash> QList<quint32> changedKeys(const Hash &old, const Hash &next)
{
    QList<quint32> changed;
    for (auto it = next.constKeyValueBegin(); it != next.constKeyValueEnd(); ++it) {
        const auto known = old.constFind((*it).first);
        if (known == old.constEnd() || !(*known == (*it).second))
            changed.append((*it).first);
    }
    return changed;
}

/// The differences of one kind of entries.
struct Difference
{
    QList<quint32> removed;
    QList<quint32> changed;
};

template <class Hash, class Next> Difference differenceOf(const Hash &old, const Next &next)
{
    return {missingKeys(old, next), changedKeys(old, next)};
}

/// Up to this number of entries, a comparison takes a small part of a frame.
constexpr int SynchronousLimit = 2000;

} // namespace

/// The comparison of the current contents with a full change. Works on implicitly shared copies, in any thread.
struct LocalStorage::Comparison
{
    ScheduleHash schedules;
    QHash<QString, ObjectHash> objects;
    StorageChange change;
    Difference schedulesDifference;
    QHash<QString, Difference> objectsDifference;

    void run()
    {
        for (auto it = objects.cbegin(); it != objects.cend(); ++it)
            objectsDifference.insert(it.key(), differenceOf(it.value(), change.objects.value(it.key())));
        // Into an empty storage everything is new, and the feed has collected the keys already.
        const bool isFirst = schedules.isEmpty() && change.scheduleIds.size() == change.schedules.size();
        schedulesDifference = isFirst ? Difference{{}, change.scheduleIds} : differenceOf(schedules, change.schedules);
    }
};

LocalStorage *LocalStorage::instance()
{
    static LocalStorage storage;
    return &storage;
}

LocalStorage::LocalStorage()
{
    m_pool.setMaxThreadCount(1);
}

LocalStorage::~LocalStorage()
{
    m_pool.waitForDone();
}

ScheduleHash LocalStorage::schedules() const
{
    return m_schedules;
}

ObjectInfo LocalStorage::constObject(quint32 id, const QString &dataName) const
{
    return constObjects(dataName)->value(id);
}

const ObjectHash *LocalStorage::constObjects(const QString &dataName) const
{
    return &objects(dataName);
}

ObjectHash &LocalStorage::objects(const QString &dataName) const
{
    return m_objects[dataName];
}

QAbstractItemModel *LocalStorage::model(const QString &dataName)
{
    QAbstractItemModel *&model = m_models[dataName];
    if (!model)
        model = new ObjectTreeModel(this, dataName);
    return model;
}

QByteArray LocalStorage::blob(quint32 id, const QString &name) const
{
    return m_blobs.value(id).value(name).data;
}

QByteArray LocalStorage::blobMd5(quint32 id, const QString &name) const
{
    return m_blobs.value(id).value(name).md5;
}

void LocalStorage::setBlob(quint32 id, const QString &name, const QByteArray &data)
{
    m_blobs[id][name] = {data, QCryptographicHash::hash(data, QCryptographicHash::Md5)};
    emit blobStored(id, name);
}

void LocalStorage::apply(const StorageChange &change)
{
    if (m_comparison)
        m_deferred.append(change);
    else
        applyNow(change);
}

void LocalStorage::applyNow(const StorageChange &change)
{
    if (change.full) {
        startComparison(change);
        return;
    }
    // Objects first, because a schedule's row shows its employee.
    for (auto it = change.objects.cbegin(); it != change.objects.cend(); ++it)
        applyObjects(it.key(), it.value(), change.removedObjects.value(it.key()));
    for (auto it = change.removedObjects.cbegin(); it != change.removedObjects.cend(); ++it) {
        if (!change.objects.contains(it.key()))
            applyObjects(it.key(), {}, it.value());
    }
    applySchedules(change.schedules, change.removedSchedules);
    removeBlobs(change.changedBlobs);
}

void LocalStorage::startComparison(const StorageChange &change)
{
    m_comparison = std::make_shared<Comparison>();
    m_comparison->change = change;
    m_comparison->schedules = m_schedules;
    for (auto it = change.objects.cbegin(); it != change.objects.cend(); ++it)
        m_objects.try_emplace(it.key());
    int count = m_schedules.size();
    for (const auto &[name, objects] : m_objects) {
        m_comparison->objects.insert(name, objects);
        count += objects.size();
    }
    if (count <= SynchronousLimit) {
        m_comparison->run();
        const auto comparison = std::exchange(m_comparison, {});
        replaceAll(*comparison);
        return;
    }
    m_pool.start([this, comparison = m_comparison] {
        comparison->run();
        QMetaObject::invokeMethod(this, &LocalStorage::finishComparison, Qt::QueuedConnection);
    });
}

void LocalStorage::finishComparison()
{
    auto comparison = std::exchange(m_comparison, {});
    replaceAll(*comparison);
    // Freeing so many records takes longer than a frame.
    m_pool.start([old = std::move(comparison)]() mutable { old.reset(); });
    while (!m_comparison && !m_deferred.isEmpty())
        applyNow(m_deferred.takeFirst());
    if (!m_comparison)
        emit settled();
}

void LocalStorage::replaceAll(Comparison &comparison)
{
    for (auto it = comparison.objectsDifference.cbegin(); it != comparison.objectsDifference.cend(); ++it) {
        if (!it->removed.isEmpty())
            emit objectRemoved(it.key(), it->removed);
        objects(it.key()) = comparison.change.objects.take(it.key());
        if (!it->changed.isEmpty())
            emit objectChanged(it.key(), it->changed);
    }
    if (!comparison.schedulesDifference.removed.isEmpty())
        emit scheduleRemoved(comparison.schedulesDifference.removed);
    m_schedules = std::exchange(comparison.change.schedules, {});
    if (!comparison.schedulesDifference.changed.isEmpty())
        emit scheduleChanged(comparison.schedulesDifference.changed);
    removeAllBlobs();
}

void LocalStorage::applySchedules(const ScheduleHash &changed, const QList<quint32> &removed)
{
    const QList<quint32> known = knownKeys(m_schedules, removed);
    if (!known.isEmpty()) {
        emit scheduleRemoved(known);
        for (const quint32 id : known)
            m_schedules.remove(id);
    }
    if (changed.isEmpty())
        return;
    for (auto it = changed.cbegin(); it != changed.cend(); ++it)
        m_schedules.insert(it.key(), it.value());
    emit scheduleChanged(changed.keys());
}

void LocalStorage::applyObjects(const QString &dataName, const ObjectHash &changed, const QList<quint32> &removed)
{
    ObjectHash &objects = this->objects(dataName);
    const QList<quint32> known = knownKeys(objects, removed);
    if (!known.isEmpty()) {
        emit objectRemoved(dataName, known);
        for (const quint32 id : known)
            objects.remove(id);
    }
    if (changed.isEmpty())
        return;
    for (auto it = changed.cbegin(); it != changed.cend(); ++it)
        objects.insert(it.key(), it.value());
    emit objectChanged(dataName, changed.keys());
}

void LocalStorage::removeAllBlobs()
{
    QHash<quint32, QStringList> all;
    for (auto it = m_blobs.cbegin(); it != m_blobs.cend(); ++it)
        all.insert(it.key(), it->keys());
    removeBlobs(all);
    m_blobs.clear();
}

void LocalStorage::removeBlobs(const QHash<quint32, QStringList> &changed)
{
    for (auto it = changed.cbegin(); it != changed.cend(); ++it) {
        for (const QString &name : it.value()) {
            if (m_blobs.contains(it.key()))
                m_blobs[it.key()].remove(name);
            emit blobChanged(it.key(), name);
        }
    }
}

} // namespace orvex
