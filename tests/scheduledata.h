#pragma once

#include "datanames.h"
#include "localstorage.h"
#include "storagechange.h"

/// Records and a storage for the tests of the schedule list.
namespace scheduledata {

inline orvex::SCHEDULE_DATA schedule(int id, const QString &name, orvex::ScheduleMode type = orvex::ScheduleFixed)
{
    orvex::SCHEDULE_DATA record;
    record.id = id;
    record.name = name;
    record.type = type;
    record.state = orvex::ScheduleStateActive;
    return record;
}

inline orvex::SCHEDULE_DATA personal(int id, const QString &name, quint32 workerId, const QDate &month)
{
    auto record = schedule(id, name, orvex::SchedulePersonal);
    record.workerId = workerId;
    record.startDate = month;
    return record;
}

inline orvex::ObjectInfo worker(quint32 id, const QString &name, const QString &number, const QString &state = {})
{
    orvex::ObjectInfo object;
    object.id = id;
    object.type = db::orgstructure::WORKER;
    object.parameters = {{db::param::NAME, name}, {db::param::WORKERNUM, number}, {db::param::OBJECTSTATE, state}};
    return object;
}

inline void store(const QList<orvex::SCHEDULE_DATA> &schedules, const QList<quint32> &removed = {})
{
    orvex::StorageChange change;
    for (const auto &schedule : schedules)
        change.schedules.insert(quint32(schedule.id), schedule);
    change.removedSchedules = removed;
    orvex::LocalStorage::instance()->apply(change);
}

inline void storeWorkers(const QList<orvex::ObjectInfo> &workers, const QList<quint32> &removed = {})
{
    orvex::StorageChange change;
    if (!workers.isEmpty())
        change.objects[orvex::SUBJECT_DATANAME] = {};
    for (const auto &worker : workers)
        change.objects[orvex::SUBJECT_DATANAME].insert(worker.id, worker);
    if (!removed.isEmpty())
        change.removedObjects[orvex::SUBJECT_DATANAME] = removed;
    orvex::LocalStorage::instance()->apply(change);
}

inline void emptyStorage()
{
    orvex::StorageChange change;
    change.full = true;
    orvex::LocalStorage::instance()->apply(change);
}

} // namespace scheduledata
