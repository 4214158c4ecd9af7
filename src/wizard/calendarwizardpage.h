#pragma once

#include "calendardays.h"
#include "parameterswizardpage.h"

#include <QList>

#include <memory>

namespace Ui {
class CalendarWizardPage;
}

/// The parameters of a calendar schedule: the shift of each day of a year.
class CalendarWizardPage final : public ParametersWizardPage
{
    Q_OBJECT

public:
    explicit CalendarWizardPage(QWidget *parent = nullptr);
    ~CalendarWizardPage() override;

    [[nodiscard]] int year() const;
    /// The marked days, including those of other years.
    [[nodiscard]] QList<orvex::SCHEDULE_CALENDAR_DAY> days() const;

signals:
    void createCalendarSchedule();
    void showShiftGuides();

protected:
    void requestSchedule() override;

private:
    std::unique_ptr<Ui::CalendarWizardPage> m_ui;
};
