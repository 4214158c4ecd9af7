#include "personalschedulewizard.h"

#include "finishwizardpage.h"
#include "personalcalendarwizardspage.h"
#include "personalemployeewizardpage.h"
#include "windowsize.h"

#include <QIcon>

PersonalScheduleWizard::PersonalScheduleWizard(QWidget *parent)
    : PageListWizard(parent)
{
    setWindowTitle(tr("Добавление индивидуального графика"));
    setWindowIcon(QIcon::fromTheme(QStringLiteral("plugin-schedule")));
    setOption(IndependentPages, false);
    setOption(NoCancelButtonOnLastPage);
    setOption(NoBackButtonOnStartPage);
    setOption(NoBackButtonOnLastPage);
    setPage(EmployeePageId, new PersonalEmployeeWizardPage(this));
    setPage(CalendarPageId, new PersonalCalendarWizardsPage(this));
    setPage(FinishPageId, new FinishWizardPage(this));

    const auto *calendar = calendarPage();
    connect(calendar, &PersonalCalendarWizardsPage::showShiftGuides, this, &PersonalScheduleWizard::showShiftGuides);
    connect(calendar, &PersonalCalendarWizardsPage::createPersonalSchedule, this,
            &PersonalScheduleWizard::createPersonalSchedule);
    connect(calendar, &PersonalCalendarWizardsPage::photoRequest, this, &PersonalScheduleWizard::photoRequest);
    connect(this, &PersonalScheduleWizard::createScheduleFinished, finishPage(), &FinishWizardPage::finished);
    setPageListVisible(true);
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

FinishWizardPage *PersonalScheduleWizard::finishPage() const
{
    return qobject_cast<FinishWizardPage *>(page(FinishPageId));
}
