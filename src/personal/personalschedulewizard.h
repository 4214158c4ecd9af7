#pragma once

#include "pagelistwizard.h"

class FinishWizardPage;
class PersonalCalendarWizardsPage;
class PersonalEmployeeWizardPage;

/// The wizard that creates a personal schedule: the employee, the days of a month, the outcome.
///
/// The wizard builds no schedule. When the month is left with "next" it asks for one; whoever answers the request
/// reports the outcome with `createScheduleFinished`, and the last page shows it.
class PersonalScheduleWizard final : public PageListWizard
{
    Q_OBJECT

public:
    enum PageId
    {
        EmployeePageId,
        CalendarPageId,
        FinishPageId
    };

    explicit PersonalScheduleWizard(QWidget *parent = nullptr);

    [[nodiscard]] PersonalEmployeeWizardPage *employeePage() const;
    [[nodiscard]] PersonalCalendarWizardsPage *calendarPage() const;
    [[nodiscard]] FinishWizardPage *finishPage() const;

signals:
    void showShiftGuides();
    void createPersonalSchedule();
    /// The request has ended; an empty \a message leaves the words to the last page.
    void createScheduleFinished(bool ok, const QString &message);
    /// The employee's photo in the local storage is to be brought up to date.
    void photoRequest(quint32 employee);
};
