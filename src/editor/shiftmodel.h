#pragma once

#include "editortablemodel.h"

/// The shifts of a schedule, one row each, by their numbers.
class ShiftModel final : public EditorTableModel
{
    Q_OBJECT

public:
    ShiftModel(orvex::SCHEDULE_DATA *schedule, QObject *parent);

    [[nodiscard]] QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;

    /// Appends \a shift, whatever \a row announces: the editor only ever appends.
    bool insertRow(int row, const orvex::SCHEDULE_SHIFT &shift);
    /// True whenever there is a record. A row out of range removes nothing, yet is announced.
    bool removeRow(int row);

protected:
    [[nodiscard]] int itemCount() const override { return schedule()->shifts.size(); }
};
