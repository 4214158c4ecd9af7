#include "shiftmodel.h"

ShiftModel::ShiftModel(orvex::SCHEDULE_DATA *schedule, QObject *parent)
    : EditorTableModel(schedule, {tr("Смена")}, parent)
{
}

QVariant ShiftModel::data(const QModelIndex &index, int role) const
{
    if (!hasRow(index) || role != Qt::DisplayRole)
        return {};
    return QStringLiteral("%1 %2").arg(tr("Смена")).arg(index.row() + 1);
}

bool ShiftModel::insertRow(int row, const orvex::SCHEDULE_SHIFT &shift)
{
    if (!schedule())
        return false;
    insertItem(schedule()->shifts, row, itemCount(), shift);
    return true;
}

bool ShiftModel::removeRow(int row)
{
    if (!schedule())
        return false;
    removeItem(schedule()->shifts, row);
    return true;
}
