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
    : ScheduleRecordModel(schedule, parent)
{
}

int DayScheduleModel::rowCount(const QModelIndex &parent) const
{
    return schedule() && !parent.isValid() ? schedule()->days.size() : 0;
}

int DayScheduleModel::columnCount(const QModelIndex &parent) const
{
    Q_UNUSED(parent)
    return ColumnCount;
}

QVariant DayScheduleModel::data(const QModelIndex &index, int role) const
{
    if (!hasDay(index) || (role != Qt::DisplayRole && role != Qt::EditRole))
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

QVariant DayScheduleModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    switch (section) {
    case DayColumn:
        return tr("День");
    case ShiftColumn:
        return tr("Смена");
    case DayOffColumn:
        return tr("Выходной");
    default:
        return {};
    }
}

Qt::ItemFlags DayScheduleModel::flags(const QModelIndex &index) const
{
    if (!index.isValid())
        return Qt::NoItemFlags;
    const Qt::ItemFlags flags = Qt::ItemIsSelectable | Qt::ItemIsEnabled;
    return index.column() == DayColumn ? flags : flags | Qt::ItemIsEditable;
}

bool DayScheduleModel::setData(const QModelIndex &index, const QVariant &value, int role)
{
    if (!hasDay(index) || role != Qt::EditRole || index.column() == DayColumn)
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
    beginInsertRows({}, row, row);
    schedule()->days.insert(row, day);
    endInsertRows();
    return true;
}

bool DayScheduleModel::removeRow(int row)
{
    if (!schedule())
        return false;
    beginRemoveRows({}, row, row);
    if (row >= 0 && row < schedule()->days.size())
        schedule()->days.removeAt(row);
    endRemoveRows();
    return true;
}

bool DayScheduleModel::hasDay(const QModelIndex &index) const
{
    return index.isValid() && index.row() < rowCount();
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
