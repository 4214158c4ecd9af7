#include "localstorage.h"

#include "objecttreemodel.h"
#include "storagechange.h"

#include <QCryptographicHash>

#include <utility>

namespace orvex {

namespace {

/// The keys of \a old that \a next lacks.
template <class Hash, class Next> QList<quint32> missingKeys(const Hash &old, const Next &next)
{
    QList<quint32> missing;
    for (auto it = old.constKeyValueBegin(); it != old.constKeyValueEnd(); ++it) {
        if (!next.contains((*it).first))
            missing.append((*it).first);
    }
    return missing;
}

/// Those of \a ids that \a hash holds.
template <class Hash> QList<quint32> heldKeys(const Hash &hash, const QList<quint32> &ids)
{
    QList<quint32> held;
    for (const quint32 id : ids) {
        if (hash.contains(id))
            held.append(id);
    }
    return held;
}

/// Those entries of \a next that differ from \a old's. Whole values are compared: the versions of another store, or
/// of a restored copy of this one, may be equal by chance.
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

/// What differs of one kind of entries.
struct Difference
{
    QList<quint32> removed;
    QList<quint32> changed;
};

template <class Hash, class Next> Difference differenceOf(const Hash &old, const Next &next)
{
    return {missingKeys(old, next), changedKeys(old, next)};
}

/// A pass over as many entries takes a small part of a frame.
constexpr int ComparedAtOnce = 2000;

} // namespace

/// What is held against what is to be held. Its parts are shared copies, so that any thread may read them.
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
        // Where nothing was held everything is new, and who read it has gathered the keys already.
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
    qDeleteAll(m_objects);
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
    return objects(dataName);
}

ObjectHash *LocalStorage::objects(const QString &dataName) const
{
    ObjectHash *&objects = m_objects[dataName];
    if (!objects)
        objects = new ObjectHash;
    return objects;
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
        m_waiting.append(change);
    else
        applyNow(change);
}

void LocalStorage::applyNow(const StorageChange &change)
{
    if (change.full) {
        compareAside(change);
        return;
    }
    // Objects first: a schedule's row shows its employee.
    for (auto it = change.objects.cbegin(); it != change.objects.cend(); ++it)
        applyObjects(it.key(), it.value(), change.removedObjects.value(it.key()));
    for (auto it = change.removedObjects.cbegin(); it != change.removedObjects.cend(); ++it) {
        if (!change.objects.contains(it.key()))
            applyObjects(it.key(), {}, it.value());
    }
    applySchedules(change.schedules, change.removedSchedules);
    dropBlobs(change.changedBlobs);
}

void LocalStorage::compareAside(const StorageChange &change)
{
    m_comparison = std::make_shared<Comparison>();
    m_comparison->change = change;
    m_comparison->schedules = m_schedules;
    int held = m_schedules.size();
    QStringList names = change.objects.keys();
    names.append(m_objects.keys());
    for (const QString &name : std::as_const(names)) {
        m_comparison->objects.insert(name, *objects(name));
        held += objects(name)->size();
    }
    if (held <= ComparedAtOnce) {
        m_comparison->run();
        const auto comparison = std::exchange(m_comparison, {});
        replaceAll(*comparison);
        return;
    }
    m_pool.start([this, comparison = m_comparison] {
        comparison->run();
        QMetaObject::invokeMethod(this, &LocalStorage::endComparison, Qt::QueuedConnection);
    });
}

void LocalStorage::endComparison()
{
    auto comparison = std::exchange(m_comparison, {});
    replaceAll(*comparison);
    // The last owner of so many records takes a frame and more to free them.
    m_pool.start([old = std::move(comparison)]() mutable { old.reset(); });
    while (!m_comparison && !m_waiting.isEmpty())
        applyNow(m_waiting.takeFirst());
    if (!m_comparison)
        emit settled();
}

void LocalStorage::replaceAll(Comparison &comparison)
{
    for (auto it = comparison.objectsDifference.cbegin(); it != comparison.objectsDifference.cend(); ++it) {
        if (!it->removed.isEmpty())
            emit objectRemoved(it.key(), it->removed);
        *objects(it.key()) = comparison.change.objects.take(it.key());
        if (!it->changed.isEmpty())
            emit objectChanged(it.key(), it->changed);
    }
    if (!comparison.schedulesDifference.removed.isEmpty())
        emit scheduleRemoved(comparison.schedulesDifference.removed);
    m_schedules = std::exchange(comparison.change.schedules, {});
    if (!comparison.schedulesDifference.changed.isEmpty())
        emit scheduleChanged(comparison.schedulesDifference.changed);
    dropAllBlobs();
}

void LocalStorage::applySchedules(const ScheduleHash &changed, const QList<quint32> &removed)
{
    const QList<quint32> held = heldKeys(m_schedules, removed);
    if (!held.isEmpty()) {
        emit scheduleRemoved(held);
        for (const quint32 id : held)
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
    ObjectHash *known = objects(dataName);
    const QList<quint32> held = heldKeys(*known, removed);
    if (!held.isEmpty()) {
        emit objectRemoved(dataName, held);
        for (const quint32 id : held)
            known->remove(id);
    }
    if (changed.isEmpty())
        return;
    for (auto it = changed.cbegin(); it != changed.cend(); ++it)
        known->insert(it.key(), it.value());
    emit objectChanged(dataName, changed.keys());
}

void LocalStorage::dropAllBlobs()
{
    QHash<quint32, QStringList> all;
    for (auto it = m_blobs.cbegin(); it != m_blobs.cend(); ++it)
        all.insert(it.key(), it->keys());
    dropBlobs(all);
    m_blobs.clear();
}

void LocalStorage::dropBlobs(const QHash<quint32, QStringList> &changed)
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
