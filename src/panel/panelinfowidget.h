#pragma once

#include "calendardaylist.h"
#include "schedules.h"

#include <QWidget>

#include <memory>
#include <optional>

namespace Ui {
class PanelInfoWidget;
}

/// The panel beside the list. It describes the selection: nothing, a count of schedules, or one schedule.
class PanelInfoWidget final : public QWidget
{
    Q_OBJECT

public:
    explicit PanelInfoWidget(QWidget *parent = nullptr);
    ~PanelInfoWidget() override;

    void clear();
    /// Prints how many schedules are selected.
    void updateInfo(int count);
    /// Prints one schedule, with the calendar days last received for it. Hours are zero until they arrive.
    void updateInfo(const orvex::SCHEDULE_DATA &schedule);

signals:
    /// The printed description is outdated: its shifts, its employee or their photo changed.
    void updateNeeded();

public slots:
    /// The days of the next `setCalendarDays` are those of \a year; those of a year that is not printed are ignored.
    void setReplyYear(int year) { m_replyYear = year; }
    /// Prints the calendar days of the current schedule. Days of another schedule are dropped with a warning, and so is
    /// a second answer until the schedule is shown again.
    void setCalendarDays(qint32 scheduleId, const QList<orvex::SCHEDULE_CALENDAR_DAY> &days);

protected:
    void changeEvent(QEvent *event) override;

private:
    void onObjectsChanged(const QString &dataName, const QList<quint32> &ids);
    void onBlobChanged(quint32 id, const QString &name);
    void printSchedule(const orvex::SCHEDULE_DATA &schedule);

    std::unique_ptr<Ui::PanelInfoWidget> m_ui;
    orvex::SCHEDULE_DATA m_schedule; ///< awaits its calendar days; a default record after the answer
    std::optional<orvex::SCHEDULE_DATA> m_printed; ///< none while the text is empty or a count
    CalendarDayList m_days;
    std::optional<int> m_replyYear;
    qint32 m_daysId = 0; ///< the schedule that `m_days` belong to
};
