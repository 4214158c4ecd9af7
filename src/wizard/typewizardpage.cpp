#include "typewizardpage.h"

#include "schedules.h"
#include "ui_typewizardpage.h"
#include "wizardpageids.h"

TypeWizardPage::TypeWizardPage(QWidget *parent)
    : TQWizardPage(parent)
    , m_ui(std::make_unique<Ui::TypeWizardPage>())
{
    m_ui->setupUi(this);
    for (const auto *button : {m_ui->rbFixed, m_ui->rbShift, m_ui->rbUnregul, m_ui->rbCalendar})
        connect(button, &QRadioButton::toggled, this, &QWizardPage::completeChanged);
}

TypeWizardPage::~TypeWizardPage() = default;

int TypeWizardPage::scheduleType() const
{
    if (m_ui->rbFixed->isChecked())
        return orvex::ScheduleFixed;
    if (m_ui->rbShift->isChecked())
        return orvex::ScheduleShift;
    if (m_ui->rbUnregul->isChecked())
        return orvex::ScheduleFree;
    if (m_ui->rbCalendar->isChecked())
        return orvex::ScheduleCalendar;
    return -1;
}

QString TypeWizardPage::pageListText() const
{
    return tr("Тип графика");
}

int TypeWizardPage::nextId() const
{
    switch (scheduleType()) {
    case orvex::ScheduleFixed:
        return schedulewizard::FixedPageId;
    case orvex::ScheduleShift:
        return schedulewizard::ShiftPageId;
    case orvex::ScheduleFree:
        return schedulewizard::FreePageId;
    case orvex::ScheduleCalendar:
        return schedulewizard::CalendarPageId;
    default:
        return -1;
    }
}

bool TypeWizardPage::isComplete() const
{
    // Without a next page the wizard would offer to finish, and create nothing.
    return scheduleType() >= 0;
}
