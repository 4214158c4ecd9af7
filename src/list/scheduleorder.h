#pragma once

#include "schedules.h"

#include <vector>

class ScheduleModel;

namespace scheduleview {

/// The order of the list: by a column, then by name, then by row. It is total: no two rows are equal.
class ScheduleOrder
{
public:
    ScheduleOrder(const ScheduleModel &model, int column, Qt::SortOrder order);

    [[nodiscard]] bool operator()(int a, int b) const;
    /// Sorts by compact keys, so that most comparisons need no records.
    [[nodiscard]] std::vector<int> sorted(std::vector<int> rows) const;

private:
    [[nodiscard]] int compareColumn(int a, int b) const;
    [[nodiscard]] QString foldedText(const orvex::SCHEDULE_DATA &record) const;
    [[nodiscard]] std::vector<qint64> majorKeys(const std::vector<int> &rows) const;

    const ScheduleModel &m_model;
    const int m_column;
    const bool m_descending;
};

} // namespace scheduleview
