#pragma once

#include "calendardays.h"
#include "schedules.h"

#include <QDialog>
#include <QList>

#include <memory>

class CalendarDaysLoader;

namespace Ui {
class PersonalScheduleEditDialog;
}

/// Edits a personal schedule: the days of its month and whether public holidays count. Employee, month and name are
/// fixed. Works on a copy of the record.
class PersonalScheduleEditDialog final : public QDialog
{
    Q_OBJECT

public:
    explicit PersonalScheduleEditDialog(const orvex::SCHEDULE_DATA &schedule, QWidget *parent = nullptr);
    ~PersonalScheduleEditDialog() override;

    /// The copy; it has the edits only after they are accepted.
    [[nodiscard]] orvex::SCHEDULE_DATA schedule() const;
    [[nodiscard]] QList<orvex::SCHEDULE_CALENDAR_DAY> calendarDays() const;

signals:
    /// The calendar needs a year's days; the answer is `setCalendarDays()`.
    void calendarDaysRequest(int scheduleId, int year);
    /// The operator wants to see the shift guide.
    void showShiftGuides();
    /// The employee's photo in the local storage may be out of date.
    void photoRequest(quint32 employeeId);

public slots:
    /// Repeats the last request if its days have not arrived.
    void requestMissingDays();
    /// The days of the next `setCalendarDays` are those of \a year; days of a year that the calendar does not show are
    /// ignored.
    void setReplyYear(int year);
    /// Shows the stored days, except where the operator has edited them. Another schedule's days are ignored.
    void setCalendarDays(int scheduleId, const QList<orvex::SCHEDULE_CALENDAR_DAY> &days);

private slots:
    void on_buttonBox_accepted();

private:
    void fill();
    void connectContents();

    std::unique_ptr<Ui::PersonalScheduleEditDialog> m_ui;
    orvex::SCHEDULE_DATA m_schedule;
    CalendarDaysLoader *m_days = nullptr;
};
