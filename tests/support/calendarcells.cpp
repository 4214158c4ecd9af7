#include "calendarcells.h"

#include "calendardaysmodel.h"

namespace support {

QModelIndex calendarCell(const QAbstractItemModel &grid, const QDate &date)
{
    for (int row = 0; row < grid.rowCount(); ++row) {
        for (int column = 1; column < grid.columnCount(); ++column) {
            const QModelIndex cell = grid.index(row, column);
            if (cell.data(CalendarDaysModel::DateRole).toDate() == date)
                return cell;
        }
    }
    return {};
}

quint32 shiftOn(const QAbstractItemModel &grid, const QDate &date)
{
    return calendarCell(grid, date).data(CalendarDaysModel::ShiftIdRole).toUInt();
}

bool putShift(QAbstractItemModel *grid, const QDate &date, quint32 shiftId)
{
    return grid->setData(calendarCell(*grid, date), shiftId, CalendarDaysModel::ShiftIdRole);
}

} // namespace support
