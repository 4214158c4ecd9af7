#include "shiftmodel.h"

ShiftModel::ShiftModel(orvex::SCHEDULE_DATA *schedule, QObject *parent)
    : ScheduleRecordModel(schedule, parent)
{
}

int ShiftModel::rowCount(const QModelIndex &parent) const
{
    return schedule() && !parent.isValid() ? schedule()->shifts.size() : 0;
}

int ShiftModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : 1;
}

QVariant ShiftModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || index.row() >= rowCount() || role != Qt::DisplayRole)
        return {};
    return QStringLiteral("%1 %2").arg(tr("Смена")).arg(index.row() + 1);
}

QVariant ShiftModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole || section != 0)
        return {};
    return tr("Смена");
}

Qt::ItemFlags ShiftModel::flags(const QModelIndex &index) const
{
    return index.isValid() ? Qt::ItemIsSelectable | Qt::ItemIsEnabled : Qt::NoItemFlags;
}

bool ShiftModel::insertRow(int row, const orvex::SCHEDULE_SHIFT &shift)
{
    if (!schedule())
        return false;
    beginInsertRows({}, row, row);
    schedule()->shifts.append(shift);
    endInsertRows();
    return true;
}

bool ShiftModel::removeRow(int row)
{
    if (!schedule())
        return false;
    beginRemoveRows({}, row, row);
    if (row >= 0 && row < schedule()->shifts.size())
        schedule()->shifts.removeAt(row);
    endRemoveRows();
    return true;
}
