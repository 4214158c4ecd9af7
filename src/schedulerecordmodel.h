#pragma once

#include "schedules.h"

#include <QAbstractItemModel>

/// A flat table over a schedule record that an editor holds. The record is not owned, is changed in place and must
/// outlive the model; without one the model has no rows and every change fails.
class ScheduleRecordModel : public QAbstractItemModel
{
    Q_OBJECT

public:
    [[nodiscard]] QModelIndex index(int row, int column, const QModelIndex &parent = {}) const final;
    [[nodiscard]] QModelIndex parent(const QModelIndex &child) const final;
    using QObject::parent;

protected:
    ScheduleRecordModel(orvex::SCHEDULE_DATA *schedule, QObject *parent);

    [[nodiscard]] orvex::SCHEDULE_DATA *schedule() const { return m_schedule; }

private:
    orvex::SCHEDULE_DATA *m_schedule;
};
