#include "shifttimemodel.h"

ShiftTimeModel::ShiftTimeModel(orvex::SCHEDULE_DATA *schedule, QObject *parent)
    : ScheduleRecordModel(schedule, parent)
{
}

void ShiftTimeModel::setCurrentShift(int position)
{
    beginResetModel();
    m_current = position;
    endResetModel();
}

int ShiftTimeModel::rowCount(const QModelIndex &parent) const
{
    return hasCurrentShift() && !parent.isValid() ? schedule()->shifts.at(m_current).times.size() : 0;
}

int ShiftTimeModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(ColumnCount);
}

QVariant ShiftTimeModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || !hasInterval(index.row()) || (role != Qt::DisplayRole && role != Qt::EditRole))
        return {};
    const auto &interval = schedule()->shifts.at(m_current).times.at(index.row());
    return index.column() == StartColumn ? interval.start : interval.finish;
}

QVariant ShiftTimeModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    switch (section) {
    case StartColumn:
        return tr("Начало");
    case FinishColumn:
        return tr("Окончание");
    default:
        return {};
    }
}

Qt::ItemFlags ShiftTimeModel::flags(const QModelIndex &index) const
{
    return index.isValid() ? Qt::ItemIsSelectable | Qt::ItemIsEditable | Qt::ItemIsEnabled : Qt::NoItemFlags;
}

bool ShiftTimeModel::setData(const QModelIndex &index, const QVariant &value, int role)
{
    if (!index.isValid() || !hasInterval(index.row()) || role != Qt::EditRole)
        return false;
    auto &interval = times()[index.row()];
    (index.column() == StartColumn ? interval.start : interval.finish) = value.toInt();
    emit dataChanged(index, index);
    return true;
}

bool ShiftTimeModel::insertRow(int row, const orvex::SCHEDULE_SHIFT_TIME &interval)
{
    if (!hasCurrentShift())
        return false;
    beginInsertRows({}, row, row);
    times().append(interval);
    endInsertRows();
    return true;
}

bool ShiftTimeModel::removeRow(int row)
{
    if (!hasCurrentShift())
        return false;
    beginRemoveRows({}, row, row);
    if (hasInterval(row))
        times().removeAt(row);
    endRemoveRows();
    return true;
}

orvex::SCHEDULE_SHIFT_TIME ShiftTimeModel::time(int row) const
{
    return hasInterval(row) ? schedule()->shifts.at(m_current).times.at(row) : orvex::SCHEDULE_SHIFT_TIME();
}

bool ShiftTimeModel::updateRow(int row, const orvex::SCHEDULE_SHIFT_TIME &interval)
{
    if (!hasInterval(row))
        return false;
    times()[row] = interval;
    emit dataChanged(index(row, StartColumn), index(row, FinishColumn));
    return true;
}

bool ShiftTimeModel::hasCurrentShift() const
{
    return schedule() && m_current >= 0 && m_current < schedule()->shifts.size();
}
