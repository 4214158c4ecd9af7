#pragma once

#include <QModelIndex>

class QAbstractItemModel;
class QDate;

/// The cells of a month's or year's grid, found by their dates.
namespace support {

/// Invalid when the grid does not show the date.
[[nodiscard]] QModelIndex calendarCell(const QAbstractItemModel &grid, const QDate &date);
/// The shift on a date; 0: none.
[[nodiscard]] quint32 shiftOn(const QAbstractItemModel &grid, const QDate &date);
/// Puts a shift on a date. Returns whether the grid accepts it.
bool putShift(QAbstractItemModel *grid, const QDate &date, quint32 shiftId);

} // namespace support
