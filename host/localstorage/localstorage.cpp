#include "localstorage.h"

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

/// Those entries of \a next that differ from \a old's, by \a same.
template <class Hash, class Same> QList<quint32> changedKeys(const Hash &old, const Hash &next, Same same)
{
    QList<quint32> changed;
    for (auto it = next.constKeyValueBegin(); it != next.constKeyValueEnd(); ++it) {
        const auto known = old.constFind((*it).first);
        if (known == old.constEnd() || !same(*known, (*it).second))
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
    const auto objects = m_objects.value(dataName);
    return objects ? objects->value(id) : ObjectInfo();
}

const ObjectHash *LocalStorage::constObjects(const QString &dataName) const
{
    static const ObjectHash none;
    const auto objects = m_objects.value(dataName);
    return objects ? objects : &none;
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
    for (const QString &name : change.objects.keys()) {
        if (!names.contains(name))
            names.append(name);
    }
    m_blobs.clear();
    for (const QString &name : std::as_const(names)) {
        ObjectHash *&objects = m_objects[name];
        if (!objects)
            objects = new ObjectHash;
        const ObjectHash next = change.objects.value(name);
        const auto removed = missingKeys(*objects, next);
        const auto changed = changedKeys(*objects, next, [](const auto &a, const auto &b) { return a == b; });
        if (!removed.isEmpty())
            emit objectRemoved(name, removed);
        *objects = next;
        if (!changed.isEmpty())
            emit objectChanged(name, changed);
    }
    const auto sameVersion = [](const auto &a, const auto &b) { return a.version == b.version; };
    const auto removed = missingKeys(m_schedules, change.schedules);
    const auto changed = changedKeys(m_schedules, change.schedules, sameVersion);
    if (!removed.isEmpty())
        emit scheduleRemoved(removed);
    m_schedules = change.schedules;
    if (!changed.isEmpty())
        emit scheduleChanged(changed);
}

void LocalStorage::applySchedules(const ScheduleHash &changed, const QList<quint32> &removed)
{
    if (!removed.isEmpty()) {
        emit scheduleRemoved(removed);
        for (const quint32 id : removed)
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
    ObjectHash *&objects = m_objects[dataName];
    if (!objects)
        objects = new ObjectHash;
    if (!removed.isEmpty()) {
        emit objectRemoved(dataName, removed);
        for (const quint32 id : removed)
            objects->remove(id);
    }
    if (changed.isEmpty())
        return;
    for (auto it = changed.cbegin(); it != changed.cend(); ++it)
        objects->insert(it.key(), it.value());
    emit objectChanged(dataName, changed.keys());
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
