#include "localstorage.h"

#include "objecttreemodel.h"
#include "storagechange.h"

#include <QCryptographicHash>

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

} // namespace

LocalStorage *LocalStorage::instance()
{
    static LocalStorage storage;
    return &storage;
}

LocalStorage::LocalStorage() = default;

LocalStorage::~LocalStorage()
{
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
    if (change.full) {
        replaceAll(change);
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

void LocalStorage::replaceAll(const StorageChange &change)
{
    QStringList names = m_objects.keys();
    for (auto it = change.objects.cbegin(); it != change.objects.cend(); ++it) {
        if (!names.contains(it.key()))
            names.append(it.key());
    }
    for (const QString &name : std::as_const(names)) {
        ObjectHash *held = objects(name);
        const ObjectHash next = change.objects.value(name);
        const auto removed = missingKeys(*held, next);
        const auto changed = changedKeys(*held, next);
        if (!removed.isEmpty())
            emit objectRemoved(name, removed);
        *held = next;
        if (!changed.isEmpty())
            emit objectChanged(name, changed);
    }
    const auto removed = missingKeys(m_schedules, change.schedules);
    // A pass over all of a large store's records costs the GUI thread more than a frame.
    const bool isFirst = m_schedules.isEmpty() && change.scheduleIds.size() == change.schedules.size();
    const auto changed = isFirst ? change.scheduleIds : changedKeys(m_schedules, change.schedules);
    if (!removed.isEmpty())
        emit scheduleRemoved(removed);
    m_schedules = change.schedules;
    if (!changed.isEmpty())
        emit scheduleChanged(changed);
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
