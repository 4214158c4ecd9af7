#pragma once

#include "creationwizard.h"

class PersonalCalendarWizardsPage;
class PersonalEmployeeWizardPage;

/// The wizard that creates a personal schedule: employee, days of a month, outcome.
class PersonalScheduleWizard final : public CreationWizard
{
    Q_OBJECT

public:
    explicit PersonalScheduleWizard(QWidget *parent = nullptr);

    [[nodiscard]] PersonalEmployeeWizardPage *employeePage() const;
    [[nodiscard]] PersonalCalendarWizardsPage *calendarPage() const;

signals:
    void showShiftGuides();
    void createPersonalSchedule();
    void createScheduleFinished(bool ok, const QString &message);
    /// The employee's photo in the local storage may be out of date.
    void photoRequest(quint32 employeeId);

public slots:
    void reportOutcome(bool ok, const QString &message) override;
};
