#pragma once

#include "calendardays.h"
#include "calendaredits.h"
#include "schedules.h"

#include <QDialog>
#include <QList>

#include <memory>

namespace Ui {
class PersonalScheduleEditDialog;
}

/// Edits a personal schedule: the days of its month and whether public holidays count. Employee, month and name stay.
///
/// The dialog works on a copy of the record, asks for its days when it is up, and sends nothing itself.
class PersonalScheduleEditDialog final : public QDialog
{
    Q_OBJECT

public:
    explicit PersonalScheduleEditDialog(const orvex::SCHEDULE_DATA &schedule, QWidget *parent = nullptr);
    ~PersonalScheduleEditDialog() override;

    /// The record; with the edits once they are accepted.
    [[nodiscard]] orvex::SCHEDULE_DATA schedule() const;
    [[nodiscard]] QList<orvex::SCHEDULE_CALENDAR_DAY> calendarDays() const;

signals:
    void calendarDaysRequest(int scheduleId, int year);
    void showShiftGuides();
    /// The employee's photo in the local storage is to be brought up to date.
    void photoRequest(quint32 employee);

public slots:
    /// Asks for the days of the schedule's year until they have come: of its own accord once, then when a lost
    /// connection is back.
    void requestMissingDays();
    /// Takes the stored days in. What the operator has changed since the last time stays; days of another schedule are
    /// ignored.
    void setCalendarDays(int scheduleId, const QList<orvex::SCHEDULE_CALENDAR_DAY> &days);

private slots:
    void on_buttonBox_accepted();

private:
    void fill();
    void connectContents();

    std::unique_ptr<Ui::PersonalScheduleEditDialog> m_ui;
    orvex::SCHEDULE_DATA m_schedule;
    CalendarEdits m_edits;
};
