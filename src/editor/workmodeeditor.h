#pragma once

#include "schedules.h"

#include <QCoreApplication>

class DayScheduleModel;
class QDate;
class QMenu;
class QTableView;
class QWidget;
class ShiftDayDelegate;
class ShiftModel;
class ShiftTimeModel;

/// Edits the work mode of a record in three lists: days, shifts, and the intervals of the current shift. Record and
/// views are not owned and must outlive the object; the record is changed in place.
class WorkModeEditor final
{
    Q_DECLARE_TR_FUNCTIONS(WorkModeEditor)

public:
    struct Views
    {
        QTableView *days = nullptr;
        QTableView *shifts = nullptr;
        QTableView *times = nullptr;
    };

    /// Sets models and delegates, children of \a editor, on the views.
    WorkModeEditor(orvex::SCHEDULE_DATA *schedule, const Views &views, QWidget *editor);
    /// Removes the models from the views, which may outlive the record.
    ~WorkModeEditor();
    Q_DISABLE_COPY_MOVE(WorkModeEditor)

    /// The date of the first day; null: the days are numbered.
    void setReferenceDate(const QDate &date);
    void setCurrentShift(int position);
    /// Appends days off or removes days until there are seven.
    void makeWeek();
    void removeAllDays();

    // Removal acts on the list's current row. Days are added and removed only in a shift schedule, intervals only in a
    // current shift.
    void addDay();
    void removeDay();
    void addShift();
    void removeShift();
    void addTime();
    void removeTime();
    /// Moves the current interval by \a step rows.
    void moveTime(int step);
    /// Insert adds and Delete removes in the list \a watched; true if the key is handled.
    bool handleKey(const QObject *watched, int key);

    /// A menu with a day off and every shift. The data of an action is the position of its shift, -1 for the day off.
    [[nodiscard]] QMenu *createShiftMenu(QWidget *parent) const;
    /// Assigns the shift to every day with a selected cell.
    void setSelectedDays(int shift);

    /// Completes open input and makes the record valid for the store: times within a day, each day with a shift of the
    /// list or none.
    void finish();

private:
    orvex::SCHEDULE_DATA *const m_schedule;
    const Views m_views;
    DayScheduleModel *const m_days;
    ShiftModel *const m_shifts;
    ShiftTimeModel *const m_times;
    ShiftDayDelegate *m_dayDelegate = nullptr;
};
