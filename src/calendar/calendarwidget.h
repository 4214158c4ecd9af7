#pragma once

#include "calendardays.h"

#include <QModelIndexList>
#include <QWidget>

class CalendarDaysModel;
class QAction;
class QMenu;
class QTableView;

/// What the month and the year calendar share: the menu that puts shifts of the guide on the selected days, and the
/// selected run of days repeated as a pattern. A calendar adds its form and its grid.
class CalendarWidget : public QWidget
{
    Q_OBJECT

public:
    void setDays(const QList<orvex::SCHEDULE_CALENDAR_DAY> &days);
    /// The whole list with the edits, cleared days and days that the grid does not show included.
    [[nodiscard]] QList<orvex::SCHEDULE_CALENDAR_DAY> days() const;
    /// True when two or more days are selected and each follows the one before.
    [[nodiscard]] bool isContinuesSelection() const;

signals:
    /// The user wants to see the shift guide.
    void showShiftGuides();

public slots:
    void setColor(const QString &color);
    /// Opens the context menu at a position of the table's viewport.
    void showContexMenu(const QPoint &pos);
    /// Puts the action's shift on the selected days, or opens the guide.
    void applyShiftAction(QAction *action);
    /// Repeats the shifts of the selected days from the day after them to the end of that day's month.
    void applyMonthPeriodic();

protected:
    explicit CalendarWidget(QWidget *parent);

    /// Tells which table and model the calendar works with; called once, both outlive the calendar's use.
    void setCalendar(QTableView *view, CalendarDaysModel *model);
    [[nodiscard]] CalendarDaysModel *daysModel() const { return m_model; }
    /// Fills the menu of the periods up to which a pattern is repeated.
    virtual void addPeriods(QMenu *menu);
    /// Repeats the shifts of the selected days from the day after them to \a lastDay of that day.
    void repeatSelection(QDate (*lastDay)(const QDate &start));

private:
    [[nodiscard]] QModelIndexList selectionInReadingOrder() const;
    void addShifts(QMenu *menu) const;
    void onGuideChanged(const QString &dataName);

    QTableView *m_view = nullptr;
    CalendarDaysModel *m_model = nullptr;
};
