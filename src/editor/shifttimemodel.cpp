#include "shifttimemodel.h"

ShiftTimeModel::ShiftTimeModel(orvex::SCHEDULE_DATA *schedule, QObject *parent)
    : EditorTableModel(schedule, {tr("Начало"), tr("Окончание")}, parent)
{
}

void ShiftTimeModel::setCurrentShift(int position)
{
    beginResetModel();
    m_current = position;
    endResetModel();
}

QVariant ShiftTimeModel::data(const QModelIndex &index, int role) const
{
    if (!hasRow(index) || (role != Qt::DisplayRole && role != Qt::EditRole))
        return {};
    const auto &interval = schedule()->shifts.at(m_current).times.at(index.row());
    return index.column() == StartColumn ? interval.start : interval.finish;
}

Qt::ItemFlags ShiftTimeModel::flags(const QModelIndex &index) const
{
    const auto flags = EditorTableModel::flags(index);
    return index.isValid() ? flags | Qt::ItemIsEditable : flags;
}

bool ShiftTimeModel::setData(const QModelIndex &index, const QVariant &value, int role)
{
    if (!hasRow(index) || role != Qt::EditRole)
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
    insertItem(times(), row, itemCount(), interval);
    return true;
}

bool ShiftTimeModel::removeRow(int row)
{
    if (!hasCurrentShift())
        return false;
    removeItem(times(), row);
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

int ShiftTimeModel::itemCount() const
{
    return hasCurrentShift() ? schedule()->shifts.at(m_current).times.size() : 0;
}

bool ShiftTimeModel::hasCurrentShift() const
{
    return schedule() && m_current >= 0 && m_current < schedule()->shifts.size();
}
