#pragma once

#include "schedules.h"

#include <QTableView>

class ScheduleModel;
class ScheduleProxyModel;

/// The table of schedules. A text that its cell cuts off is shown as a tool tip, and the selection also signals rows
/// that a layout change removes from it.
class ScheduleTable final : public QTableView
{
    Q_OBJECT

public:
    explicit ScheduleTable(QWidget *parent = nullptr);

    /// Shows \a model through \a proxy, without taking ownership. Must be called once.
    void setModels(ScheduleModel *model, ScheduleProxyModel *proxy);
    /// Sorts by the column and order of the header's sort indicator.
    void sortAgain();
    /// Selects only this schedule and makes it current, if the tab shows it.
    void selectSchedule(qint32 id);

    /// Returns the rows with a selected cell, ascending.
    [[nodiscard]] QList<int> selectedRows() const;
    /// Returns a default record for a row out of range.
    [[nodiscard]] orvex::SCHEDULE_DATA recordOf(int row) const;

private:
    ScheduleModel *m_model = nullptr;
    ScheduleProxyModel *m_proxy = nullptr;
};
