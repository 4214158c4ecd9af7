#include "schedulewizard.h"

#include "calendarwizardpage.h"
#include "finishwizardpage.h"
#include "fixedwizardpage.h"
#include "freewizardpage.h"
#include "schedulenamewidget.h"
#include "shiftwizardpage.h"
#include "typewizardpage.h"
#include "wizardpageids.h"

using namespace schedulewizard;

ScheduleWizard::ScheduleWizard(QWidget *parent)
    : CreationWizard(tr("Добавление графика работы"), parent)
{
    // The year calendar can use a whole screen.
    setWindowFlag(Qt::WindowMaximizeButtonHint);
    addPages();
    addPageGroup(tr("Параметры"), {FixedPageId, ShiftPageId, FreePageId, CalendarPageId});
    connectPages();
}

TypeWizardPage *ScheduleWizard::typePage() const
{
    return qobject_cast<TypeWizardPage *>(page(TypePageId));
}

FixedWizardPage *ScheduleWizard::fixedPage() const
{
    return qobject_cast<FixedWizardPage *>(page(FixedPageId));
}

ShiftWizardPage *ScheduleWizard::shiftPage() const
{
    return qobject_cast<ShiftWizardPage *>(page(ShiftPageId));
}

FreeWizardPage *ScheduleWizard::freePage() const
{
    return qobject_cast<FreeWizardPage *>(page(FreePageId));
}

CalendarWizardPage *ScheduleWizard::calendarPage() const
{
    return qobject_cast<CalendarWizardPage *>(page(CalendarPageId));
}

void ScheduleWizard::setScheduleName(const QString &name)
{
    for (const int id : pageIds()) {
        if (const auto *parameters = qobject_cast<ParametersWizardPage *>(page(id)))
            parameters->nameWidget()->setName(name);
    }
}

QSize ScheduleWizard::sizeHint() const
{
    return {800, 400};
}

void ScheduleWizard::reportOutcome(bool ok, const QString &message)
{
    emit createScheduleFinished(ok, message);
}

void ScheduleWizard::addPages()
{
    setPage(TypePageId, new TypeWizardPage(this));
    setPage(FixedPageId, new FixedWizardPage(this));
    setPage(ShiftPageId, new ShiftWizardPage(this));
    setPage(FreePageId, new FreeWizardPage(this));
    setPage(CalendarPageId, new CalendarWizardPage(this));
    addFinishPage(FinishPageId);
}

void ScheduleWizard::connectPages()
{
    connect(calendarPage(), &CalendarWizardPage::showShiftGuides, this, &ScheduleWizard::showShiftGuides);
    connect(fixedPage(), &FixedWizardPage::createFixedSchedule, this, &ScheduleWizard::createFixedSchedule);
    connect(shiftPage(), &ShiftWizardPage::createShiftSchedule, this, &ScheduleWizard::createShiftSchedule);
    connect(freePage(), &FreeWizardPage::createUnregulSchedule, this, &ScheduleWizard::createUnregulSchedule);
    connect(calendarPage(), &CalendarWizardPage::createCalendarSchedule, this, &ScheduleWizard::createCalendarSchedule);
    connect(this, &ScheduleWizard::createScheduleFinished, finishPage(), &FinishWizardPage::finished);
}
