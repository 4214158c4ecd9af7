#pragma once

#include <QList>

class ScheduleModel;
class ScheduleTable;

namespace scheduleview {

/// Keeps the list equal to the active schedules of the local storage.
class ScheduleListUpdater
{
public:
    /// \a model and \a table must outlive this object.
    ScheduleListUpdater(ScheduleModel *model, ScheduleTable *table);

    void fill();
    /// Reads new and changed schedules. Returns whether the list changed.
    bool read(const QList<quint32> &ids);
    /// Removes the rows of schedules that the storage is about to remove. Returns whether the list changed.
    bool remove(const QList<quint32> &ids);
    /// Selects the schedule when it is appended, provided that it is the last one of its change.
    void selectWhenRead(quint32 id) { m_awaitedId = id; }

private:
    ScheduleModel *const m_model;
    ScheduleTable *const m_table;
    quint32 m_awaitedId = 0; ///< 0: none
};

} // namespace scheduleview
