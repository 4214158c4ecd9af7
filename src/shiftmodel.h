#pragma once

#include "schedulerecordmodel.h"

/// The shifts of a schedule, one row each, by their numbers.
class ShiftModel final : public ScheduleRecordModel
{
    Q_OBJECT

public:
    ShiftModel(orvex::SCHEDULE_DATA *schedule, QObject *parent);

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation,
                                      int role = Qt::DisplayRole) const override;
    [[nodiscard]] Qt::ItemFlags flags(const QModelIndex &index) const override;

    /// Appends \a shift, whatever \a row announces: the editor only ever appends.
    bool insertRow(int row, const orvex::SCHEDULE_SHIFT &shift);
    bool removeRow(int row);
};
