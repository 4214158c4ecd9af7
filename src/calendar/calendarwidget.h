#pragma once

#include "calendardays.h"

#include <QModelIndexList>
#include <QWidget>

class CalendarDaysModel;
class QAction;
class QMenu;
class QTableView;

/// Base of the month and the year calendar: the menu that assigns shifts of the guide to the selected days or repeats
/// them as a pattern. A subclass adds its form and its grid.
class CalendarWidget : public QWidget
{
    Q_OBJECT

public:
    void setDays(const QList<orvex::SCHEDULE_CALENDAR_DAY> &days);
    /// The whole edited list, including cleared days and days that the grid does not show.
    [[nodiscard]] QList<orvex::SCHEDULE_CALENDAR_DAY> days() const;
    /// Whether two or more consecutive days are selected.
    [[nodiscard]] bool isContinuesSelection() const;
    void focusGrid();

signals:
    /// The operator wants to see the shift guide.
    void showShiftGuides();

public slots:
    void setColor(const QString &color);
    /// Opens the context menu at a position of the table's viewport.
    void showContexMenu(const QPoint &pos);
    /// Assigns the action's shift to the selected days, or requests the guide.
    void applyShiftAction(QAction *action);
    /// Repeats the selected days' shifts from the next day to the end of its month.
    void applyMonthPeriodic();

protected:
    explicit CalendarWidget(QWidget *parent);

    /// Must be called once. The subclass remains the owner of both.
    void setCalendar(QTableView *view, CalendarDaysModel *model);
    /// Adds the periods for which a pattern can be repeated.
    virtual void addPeriods(QMenu *menu);
    /// Repeats the selected days' shifts from the next day to \a lastDay of it.
    void repeatSelection(QDate (*lastDay)(const QDate &start));

private:
    [[nodiscard]] QModelIndexList selectionInReadingOrder() const;
    void addShifts(QMenu *menu) const;
    void onGuideChanged(const QString &dataName);

    QTableView *m_view = nullptr;
    CalendarDaysModel *m_daysModel = nullptr;
};
