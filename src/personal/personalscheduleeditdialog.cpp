#include "personalscheduleeditdialog.h"

#include "calendardaysloader.h"
#include "ui_personalscheduleeditdialog.h"
#include "windowsize.h"

PersonalScheduleEditDialog::PersonalScheduleEditDialog(const orvex::SCHEDULE_DATA &schedule, QWidget *parent)
    : QDialog(parent)
    , m_ui(std::make_unique<Ui::PersonalScheduleEditDialog>())
    , m_schedule(schedule)
{
    m_ui->setupUi(this);
    m_days = new CalendarDaysLoader(m_schedule.id, m_ui->calendarWidget);
    connectContents();
    fill();
    m_ui->nameWidget->hide();
    m_ui->calendarWidget->focusGrid();
    resize(scheduleview::windowSize(*this, {72, 36}));
    m_days->requestLater(m_schedule.startDate.year());
}

PersonalScheduleEditDialog::~PersonalScheduleEditDialog() = default;

orvex::SCHEDULE_DATA PersonalScheduleEditDialog::schedule() const
{
    return m_schedule;
}

QList<orvex::SCHEDULE_CALENDAR_DAY> PersonalScheduleEditDialog::calendarDays() const
{
    return m_ui->calendarWidget->days();
}

void PersonalScheduleEditDialog::requestMissingDays()
{
    m_days->requestMissing();
}

void PersonalScheduleEditDialog::setReplyYear(int year)
{
    m_days->setReplyYear(year);
}

void PersonalScheduleEditDialog::setCalendarDays(int scheduleId, const QList<orvex::SCHEDULE_CALENDAR_DAY> &days)
{
    m_days->setDays(scheduleId, days);
}

void PersonalScheduleEditDialog::on_buttonBox_accepted()
{
    m_schedule.useHolidays = m_ui->cbUseHolidays->isChecked() ? 1 : 0;
    m_schedule.color = m_ui->nameWidget->colorName();
    accept();
}

void PersonalScheduleEditDialog::fill()
{
    m_ui->employeeCard->setEmployee(m_schedule.workerId);
    m_ui->nameWidget->setName(m_ui->employeeCard->employeeName());
    m_ui->nameWidget->setEnabledName(false);
    m_ui->nameWidget->setColorName(m_schedule.color);
    m_ui->cbUseHolidays->setChecked(m_schedule.useHolidays != 0);
    m_ui->calendarWidget->setDate(m_schedule.startDate);
    m_ui->calendarWidget->setDateEnabled(false);
    m_ui->calendarWidget->setColor(m_schedule.color);
}

void PersonalScheduleEditDialog::connectContents()
{
    connect(m_ui->buttonBox, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(m_ui->nameWidget, &ScheduleNameWidget::colorChanged, m_ui->calendarWidget, &CalendarMonthWidget::setColor);
    connect(m_ui->calendarWidget, &CalendarMonthWidget::showShiftGuides, this,
            &PersonalScheduleEditDialog::showShiftGuides);
    connect(m_days, &CalendarDaysLoader::daysRequest, this, &PersonalScheduleEditDialog::calendarDaysRequest);
    connect(m_ui->employeeCard, &EmployeeCard::photoRequest, this, &PersonalScheduleEditDialog::photoRequest);
}
