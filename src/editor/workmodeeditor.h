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

/// What an editor's three lists do to the work mode of its record: days, shifts, and the intervals of the current
/// shift. The record is not owned, is changed in place and must outlive this; the views must, too.
class WorkModeEditor final
{
    Q_DECLARE_TR_FUNCTIONS(WorkModeEditor)

public:
    struct Views
    {
        QTableView *days;
        QTableView *shifts;
        QTableView *times;
    };

    /// Puts models and delegates, which become children of \a editor, on the views.
    WorkModeEditor(orvex::SCHEDULE_DATA *schedule, const Views &views, QWidget *editor);
    /// Takes the models off the views: one that is still shown would ask about a record that may be gone.
    ~WorkModeEditor();
    Q_DISABLE_COPY_MOVE(WorkModeEditor)

    /// The date of the first day; null: the days are numbered.
    void setReferenceDate(const QDate &date);
    /// Shows the intervals of this shift.
    void setCurrentShift(int position);
    /// Fills with days off, or cuts, to the seven days of a week.
    void makeWeek();
    void removeAllDays();

    // Each as a key or button asks for it, about the list's current row; false where there is nothing to be done.
    bool addDay();
    bool removeDay();
    bool addShift();
    bool removeShift();
    bool addTime();
    bool removeTime();
    /// Moves the current interval by \a step rows.
    void moveTime(int step);
    /// Insert adds and Delete removes in the list \a watched; true where the key was meant for it.
    bool handleKey(const QObject *watched, int key);

    /// A menu of a day off and every shift, each action with the position as its data; -1: off.
    [[nodiscard]] QMenu *createShiftMenu(QWidget *parent) const;
    /// Gives every day with a selected cell this shift.
    void setSelectedDays(int shift);

    /// Takes over what is still being typed, and leaves a record that a store takes: times of a day, days with a shift
    /// of the list or without any.
    void finish();

private:
    orvex::SCHEDULE_DATA *m_schedule;
    Views m_views;
    DayScheduleModel *m_days;
    ShiftModel *m_shifts;
    ShiftTimeModel *m_times;
    ShiftDayDelegate *m_dayDelegate;
};
