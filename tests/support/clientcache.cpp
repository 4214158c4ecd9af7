#include "clientcache.h"

#include "datanames.h"
#include "localstorage.h"

namespace support {

namespace {

void insert(orvex::StorageChange &change, const QString &dataName, const Objects &objects)
{
    for (const auto &object : objects)
        change.objects[dataName].insert(object.id, object);
}

} // namespace

orvex::StorageChange fullChange(const QList<orvex::SCHEDULE_DATA> &schedules, const QString &dataName,
                                const Objects &objects)
{
    orvex::StorageChange change;
    change.full = true;
    for (const auto &schedule : schedules)
        change.schedules.insert(quint32(schedule.id), schedule);
    insert(change, dataName, objects);
    return change;
}

void clearCache()
{
    replaceObjects({}, {});
}

void replaceObjects(const QString &dataName, const Objects &objects)
{
    orvex::LocalStorage::instance()->apply(fullChange({}, dataName, objects));
}

void replaceGuide(const Objects &shifts, const Objects &intervals)
{
    auto change = fullChange({}, orvex::SCHEDULE_SHIFT_DATANAME, shifts);
    insert(change, orvex::SHIFT_INTERVAL_DATANAME, intervals);
    orvex::LocalStorage::instance()->apply(change);
}

void storeSchedules(const QList<orvex::SCHEDULE_DATA> &schedules, const QList<quint32> &removed)
{
    orvex::StorageChange change;
    for (const auto &schedule : schedules)
        change.schedules.insert(quint32(schedule.id), schedule);
    change.removedSchedules = removed;
    orvex::LocalStorage::instance()->apply(change);
}

void storeObjects(const QString &dataName, const Objects &objects, const QList<quint32> &removed)
{
    orvex::StorageChange change;
    insert(change, dataName, objects);
    if (!removed.isEmpty())
        change.removedObjects[dataName] = removed;
    orvex::LocalStorage::instance()->apply(change);
}

void storeEmployees(const Objects &employees, const QList<quint32> &removed)
{
    storeObjects(orvex::SUBJECT_DATANAME, employees, removed);
}

} // namespace support
