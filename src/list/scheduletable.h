#pragma once

#include "schedules.h"

#include <QTableView>

class ScheduleModel;
class ScheduleProxyModel;

/// The table of schedules. What is cut off is a tool tip, and every row that leaves the selection is told of.
class ScheduleTable : public QTableView
{
    Q_OBJECT

public:
    explicit ScheduleTable(QWidget *parent = nullptr);

    /// Shows \a model through \a proxy; both stay their owner's. To be called once.
    void setModels(ScheduleModel *model, ScheduleProxyModel *proxy);
    /// Sorts by the column and order that the header shows.
    void sortAgain();
    /// Selects this schedule alone and makes it the current one, if the tab shows it.
    void selectSchedule(qint32 id);

    /// The rows that hold a selected cell, ascending.
    [[nodiscard]] QList<int> selectedRows() const;
    /// A default record for a row that is not there.
    [[nodiscard]] orvex::SCHEDULE_DATA recordOf(int row) const;

private:
    ScheduleModel *m_model = nullptr;
    ScheduleProxyModel *m_proxy = nullptr;
};
