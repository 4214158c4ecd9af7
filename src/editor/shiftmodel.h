#pragma once

#include "editortablemodel.h"

/// The shifts of a schedule, numbered.
class ShiftModel final : public EditorTableModel
{
    Q_OBJECT

public:
    ShiftModel(orvex::SCHEDULE_DATA *schedule, QObject *parent);

    [[nodiscard]] QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;

    /// Signals an insertion at \a row, but always appends.
    bool insertRow(int row, const orvex::SCHEDULE_SHIFT &shift);
    /// True if there is a record. For a row out of range the removal is signalled although nothing is removed.
    bool removeRow(int row);

protected:
    [[nodiscard]] int itemCount() const override { return schedule()->shifts.size(); }
};
