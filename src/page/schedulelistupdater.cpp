#include "schedulelistupdater.h"

#include "localstorage.h"
#include "schedulemodel.h"
#include "scheduletable.h"

using orvex::LocalStorage;

namespace scheduleview {

ScheduleListUpdater::ScheduleListUpdater(ScheduleModel *model, ScheduleTable *table)
    : m_model(model)
    , m_table(table)
{
}

void ScheduleListUpdater::fill()
{
    const auto schedules = LocalStorage::instance()->schedules();
    ScheduleModel::Records records;
    records.reserve(std::size_t(schedules.size()));
    for (const auto &record : schedules) {
        if (record.state == orvex::ScheduleStateActive)
            records.push_back(&record);
    }
    m_model->storeRecords(records);
    m_table->sortAgain();
}

bool ScheduleListUpdater::read(const QList<quint32> &ids)
{
    const auto schedules = LocalStorage::instance()->schedules();
    ScheduleModel::Records records;
    for (const quint32 id : ids) {
        const auto record = schedules.constFind(id);
        if (record != schedules.constEnd() && record->state == orvex::ScheduleStateActive)
            records.push_back(&*record);
    }
    const auto stored = m_model->storeRecords(records);
    if (stored.appended + stored.updated == 0)
        return false;
    if (stored.appended > 0 && m_awaitedId != 0 && quint32(stored.lastAppended) == m_awaitedId) {
        m_table->selectSchedule(stored.lastAppended);
        m_awaitedId = 0;
    }
    m_table->sortAgain();
    return true;
}

bool ScheduleListUpdater::remove(const QList<quint32> &ids)
{
    const auto schedules = LocalStorage::instance()->schedules();
    QList<quint32> active;
    for (const quint32 id : ids) {
        if (schedules.value(id).state == orvex::ScheduleStateActive)
            active.append(id);
    }
    return m_model->removeRecords(active) > 0;
}

} // namespace scheduleview
