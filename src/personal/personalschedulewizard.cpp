#include "personalschedulewizard.h"

#include "finishwizardpage.h"
#include "personalcalendarwizardspage.h"
#include "personalemployeewizardpage.h"
#include "windowsize.h"
#include "wizardpageids.h"

using namespace personalwizard;

PersonalScheduleWizard::PersonalScheduleWizard(QWidget *parent)
    : CreationWizard(tr("Добавление индивидуального графика"), parent)
{
    setOption(IndependentPages, false);
    setPage(EmployeePageId, new PersonalEmployeeWizardPage(this));
    setPage(CalendarPageId, new PersonalCalendarWizardsPage(employeePage(), this));
    addFinishPage(FinishPageId);

    const auto *calendar = calendarPage();
    connect(calendar, &PersonalCalendarWizardsPage::showShiftGuides, this, &PersonalScheduleWizard::showShiftGuides);
    connect(calendar, &PersonalCalendarWizardsPage::createPersonalSchedule, this,
            &PersonalScheduleWizard::createPersonalSchedule);
    connect(calendar, &PersonalCalendarWizardsPage::photoRequest, this, &PersonalScheduleWizard::photoRequest);
    connect(this, &PersonalScheduleWizard::createScheduleFinished, finishPage(), &FinishWizardPage::finished);
    resize(scheduleview::windowSize(*this, {100, 40}));
}

PersonalEmployeeWizardPage *PersonalScheduleWizard::employeePage() const
{
    return qobject_cast<PersonalEmployeeWizardPage *>(page(EmployeePageId));
}

PersonalCalendarWizardsPage *PersonalScheduleWizard::calendarPage() const
{
    return qobject_cast<PersonalCalendarWizardsPage *>(page(CalendarPageId));
}

void PersonalScheduleWizard::reportOutcome(bool ok, const QString &message)
{
    emit createScheduleFinished(ok, message);
}
