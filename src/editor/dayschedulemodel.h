#pragma once

#include "editortablemodel.h"

/// The days of a schedule's work mode: number, shift, day off.
class DayScheduleModel final : public EditorTableModel
{
    Q_OBJECT

public:
    enum Column
    {
        DayColumn,
        ShiftColumn, ///< position of the shift in the record's list; -1: none
        DayOffColumn,
        ColumnCount
    };

    DayScheduleModel(orvex::SCHEDULE_DATA *schedule, QObject *parent);

    [[nodiscard]] QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    [[nodiscard]] Qt::ItemFlags flags(const QModelIndex &index) const override;
    bool setData(const QModelIndex &index, const QVariant &value, int role = Qt::EditRole) override;

    bool insertRow(int row, const orvex::SCHEDULE_DAY &day);
    /// True if there is a record. For a row out of range the removal is signalled although nothing is removed.
    bool removeRow(int row);

protected:
    [[nodiscard]] int itemCount() const override { return schedule()->days.size(); }

private:
    void setShift(orvex::SCHEDULE_DAY &day, const QVariant &position) const;
};
