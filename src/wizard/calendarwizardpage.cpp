#include "calendarwizardpage.h"

#include "ui_calendarwizardpage.h"

CalendarWizardPage::CalendarWizardPage(QWidget *parent)
    : ParametersWizardPage(parent)
    , m_ui(std::make_unique<Ui::CalendarWizardPage>())
{
    m_ui->setupUi(this);
    setNameWidget(m_ui->nameWidget);
    connect(m_ui->calendarWidget, &CalendarYearWidget::showShiftGuides, this, &CalendarWizardPage::showShiftGuides);
    m_ui->calendarWidget->setColor(nameWidget()->colorName());
    connect(nameWidget(), &ScheduleNameWidget::colorChanged, m_ui->calendarWidget, &CalendarYearWidget::setColor);
}

CalendarWizardPage::~CalendarWizardPage() = default;

int CalendarWizardPage::year() const
{
    return m_ui->calendarWidget->year();
}

QList<orvex::SCHEDULE_CALENDAR_DAY> CalendarWizardPage::days() const
{
    return m_ui->calendarWidget->days();
}

void CalendarWizardPage::requestSchedule()
{
    emit createCalendarSchedule();
}
