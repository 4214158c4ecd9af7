#pragma once

#include "calendardays.h"
#include "schedules.h"

#include <QDialog>
#include <QPointer>

#include <memory>

class CalendarDaysLoader;
class QAction;
class QModelIndex;
class WorkModeEditor;

namespace Ui {
class ScheduleEditDialog;
}

/// Edits a copy of one schedule of a common type. Days and shifts change in the copy at once, everything else when the
/// operator accepts.
class ScheduleEditDialog : public QDialog
{
    Q_OBJECT

public:
    ScheduleEditDialog(const orvex::SCHEDULE_DATA &schedule, QWidget *parent);
    ~ScheduleEditDialog() override;

    [[nodiscard]] orvex::SCHEDULE_DATA schedule() const;
    [[nodiscard]] int calendarYear() const;
    /// The calendar's edited days, including those of other years.
    [[nodiscard]] QList<orvex::SCHEDULE_CALENDAR_DAY> calendarDays() const;

    bool eventFilter(QObject *watched, QEvent *event) override;

signals:
    /// The calendar needs a year's days; the answer is `setCalendarDays()`.
    void calendarDaysRequest(int scheduleId, int year);
    /// The operator wants to see the shift guide.
    void showShiftGuides();

public slots:
    /// Repeats the last request if its days have not arrived.
    void requestMissingDays();
    /// The days of the next `setCalendarDays` are those of \a year; days of a year that the calendar does not show are
    /// ignored.
    void setReplyYear(int year);
    void setCalendarDays(qint32 scheduleId, const QList<orvex::SCHEDULE_CALENDAR_DAY> &days);

private slots:
    void slotTypeChanged(int index);
    void startDateChanged();
    void moveTimeUp();
    void moveTimeDown();
    void updateFreeNorm();
    void updateFreeBreak();
    void slotModeContextMenuRequested(const QPoint &pos);
    void slotModeShiftSelected(QAction *action);
    void slotDayDataChanged();
    void slotShiftCurrentChanged(const QModelIndex &current);
    void slotTimeCurrentChangedf();
    void slotCalendarYearChanged(int year);

    void on_buttonBox_accepted();
    void on_buttonBox_rejected();
    void on_tabWidget_currentChanged(int index);
    void on_tbAddDay_clicked();
    void on_tbDelDay_clicked();
    void on_tbAddShift_clicked();
    void on_tbDelShift_clicked();
    void on_tbAddTime_clicked();
    void on_tbDelTime_clicked();

private:
    void initTypes();
    void initScalars();
    void initWorkMode();
    void connectControls();
    void initFreeLimits();
    void initToolButtons();
    void setStartSize();

    void applyMode();
    void applyFixedMode();
    void applyCalendarMode();
    void setShiftsEnabled(bool enabled);
    void showPeriod();
    void updateButtonsEnabled();

    void writeScalars();

    std::unique_ptr<Ui::ScheduleEditDialog> m_ui;
    orvex::SCHEDULE_DATA m_schedule;
    std::unique_ptr<WorkModeEditor> m_workMode; ///< destroyed before the record that it edits
    CalendarDaysLoader *m_calendarDays = nullptr;
    QPointer<QWidget> m_calendarFocus; ///< had the focus when the calendar was disabled for a request
};
