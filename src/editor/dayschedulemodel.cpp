#include "dayschedulemodel.h"

namespace {

bool isInteger(const QVariant &value)
{
    switch (value.userType()) {
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
        return true;
    default:
        return false;
    }
}

} // namespace

DayScheduleModel::DayScheduleModel(orvex::SCHEDULE_DATA *schedule, QObject *parent)
    : EditorTableModel(schedule, {tr("День"), tr("Смена"), tr("Выходной")}, parent)
{
}

QVariant DayScheduleModel::data(const QModelIndex &index, int role) const
{
    if (!hasRow(index) || (role != Qt::DisplayRole && role != Qt::EditRole))
        return {};
    const auto &day = schedule()->days.at(index.row());
    switch (index.column()) {
    case DayColumn:
        return index.row();
    case ShiftColumn:
        return day.shift;
    case DayOffColumn:
        return day.dayOff;
    default:
        return {};
    }
}

Qt::ItemFlags DayScheduleModel::flags(const QModelIndex &index) const
{
    const auto flags = EditorTableModel::flags(index);
    return index.isValid() && index.column() != DayColumn ? flags | Qt::ItemIsEditable : flags;
}

bool DayScheduleModel::setData(const QModelIndex &index, const QVariant &value, int role)
{
    if (!hasRow(index) || role != Qt::EditRole || index.column() == DayColumn)
        return false;
    auto &day = schedule()->days[index.row()];
    if (index.column() == ShiftColumn) {
        setShift(day, value);
    } else if (value.userType() == QMetaType::Bool) {
        if (value.toBool())
            day.clear();
        else
            day.dayOff = false;
    }
    emit dataChanged(index.sibling(index.row(), ShiftColumn), index.sibling(index.row(), DayOffColumn));
    return true;
}

bool DayScheduleModel::insertRow(int row, const orvex::SCHEDULE_DAY &day)
{
    if (!schedule())
        return false;
    insertItem(schedule()->days, row, row, day);
    return true;
}

bool DayScheduleModel::removeRow(int row)
{
    if (!schedule())
        return false;
    removeItem(schedule()->days, row);
    return true;
}

void DayScheduleModel::setShift(orvex::SCHEDULE_DAY &day, const QVariant &position) const
{
    const auto &shifts = schedule()->shifts;
    const qint64 shift = isInteger(position) ? position.toLongLong() : -1;
    if (shift < 0 || shift >= shifts.size()) {
        day.clear();
        return;
    }
    day.shift = qint32(shift);
    day.shiftId = shifts.at(day.shift).id;
    day.dayOff = false;
}
