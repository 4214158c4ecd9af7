#include "schedulerecordmodel.h"

ScheduleRecordModel::ScheduleRecordModel(orvex::SCHEDULE_DATA *schedule, QObject *parent)
    : QAbstractItemModel(parent)
    , m_schedule(schedule)
{
}

QModelIndex ScheduleRecordModel::index(int row, int column, const QModelIndex &parent) const
{
    return hasIndex(row, column, parent) ? createIndex(row, column) : QModelIndex();
}

QModelIndex ScheduleRecordModel::parent(const QModelIndex &child) const
{
    Q_UNUSED(child)
    return {};
}
