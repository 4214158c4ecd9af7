#pragma once

#include "editortablemodel.h"

/// The working intervals of the current shift in the operator's order, in seconds from midnight. Without a current
/// shift there are no rows and every change fails.
class ShiftTimeModel final : public EditorTableModel
{
    Q_OBJECT

public:
    enum Column
    {
        StartColumn,
        FinishColumn,
        ColumnCount
    };

    ShiftTimeModel(orvex::SCHEDULE_DATA *schedule, QObject *parent);

    /// Shows the shift at this position of the record's list; any other position shows nothing.
    void setCurrentShift(int position);

    [[nodiscard]] QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    [[nodiscard]] Qt::ItemFlags flags(const QModelIndex &index) const override;
    bool setData(const QModelIndex &index, const QVariant &value, int role = Qt::EditRole) override;

    /// Signals an insertion at \a row, but always appends.
    bool insertRow(int row, const orvex::SCHEDULE_SHIFT_TIME &interval);
    /// True if there is a current shift. For a row out of range the removal is signalled although nothing is removed.
    bool removeRow(int row);

    /// A copy of the interval; a default one for a row out of range.
    [[nodiscard]] orvex::SCHEDULE_SHIFT_TIME time(int row) const;
    /// Replaces the whole interval, including its identifier; false for a row out of range.
    bool updateRow(int row, const orvex::SCHEDULE_SHIFT_TIME &interval);

protected:
    [[nodiscard]] int itemCount() const override;

private:
    [[nodiscard]] bool hasCurrentShift() const;
    [[nodiscard]] bool hasInterval(int row) const { return row >= 0 && row < rowCount(); }
    [[nodiscard]] QList<orvex::SCHEDULE_SHIFT_TIME> &times() { return schedule()->shifts[m_current].times; }

    int m_current = -1;
};
