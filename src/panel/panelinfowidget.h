#pragma once

#include "calendardaylist.h"
#include "schedules.h"

#include <QWidget>

#include <memory>

namespace Ui {
class PanelInfoWidget;
}

/// The panel beside the list that tells about the selection: nothing, how many schedules, or all about one.
class PanelInfoWidget : public QWidget
{
    Q_OBJECT

public:
    explicit PanelInfoWidget(QWidget *parent = nullptr);
    ~PanelInfoWidget() override;

    void clear();
    /// Several schedules are selected.
    void updateInfo(int count);
    /// One schedule is selected. The hours of a calendar are those at hand for this very schedule, zeros until they
    /// arrive.
    void updateInfo(const orvex::SCHEDULE_DATA &schedule);

public slots:
    /// Takes the calendar days of the schedule shown; those of another one are dropped with a warning. Only the first
    /// answer counts, until the schedule is shown again.
    void setCalendarDays(qint32 scheduleId, const QList<orvex::SCHEDULE_CALENDAR_DAY> &days);

protected:
    void changeEvent(QEvent *event) override;

private:
    void printSchedule(const orvex::SCHEDULE_DATA &schedule);

    std::unique_ptr<Ui::PanelInfoWidget> m_ui;
    orvex::SCHEDULE_DATA m_schedule; ///< whose calendar days are awaited; a default one after the answer
    orvex::SCHEDULE_DATA m_printed; ///< what the text tells about
    CalendarDayList m_days;
    qint32 m_daysId = 0; ///< whose days these are
    int m_count = 0; ///< of the schedules selected, where the text tells no more
};
