#include "personalscheduleeditdialog.h"

#include "svc.h"
#include "ui_personalscheduleeditdialog.h"
#include "windowsize.h"

#include <QLoggingCategory>
#include <QTableView>
#include <QTimer>

PersonalScheduleEditDialog::PersonalScheduleEditDialog(const orvex::SCHEDULE_DATA &schedule, QWidget *parent)
    : QDialog(parent)
    , m_ui(std::make_unique<Ui::PersonalScheduleEditDialog>())
    , m_schedule(schedule)
{
    m_ui->setupUi(this);
    connectContents();
    fill();
    m_ui->nameWidget->hide();
    // Not on the button before it, which clears the month.
    m_ui->calendarWidget->findChild<QTableView *>()->setFocus();
    resize(scheduleview::windowSize(*this, {72, 36}));
    // Later, when whoever opens the dialog listens.
    QTimer::singleShot(0, this, &PersonalScheduleEditDialog::requestMissingDays);
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
    if (!m_edits.hasAnswer())
        emit calendarDaysRequest(m_schedule.id, m_schedule.startDate.year());
}

void PersonalScheduleEditDialog::setCalendarDays(int scheduleId, const QList<orvex::SCHEDULE_CALENDAR_DAY> &days)
{
    qCDebug(svc()) << "days" << scheduleId << days.size();
    if (scheduleId != m_schedule.id) {
        qCWarning(svc()) << "wrong schedule id" << m_schedule.id << scheduleId;
        return;
    }
    // They come again whenever the page behind refreshes its panel; the operator may be in the middle of his work.
    if (const int year = m_schedule.startDate.year(); m_edits.isNews(days, year))
        m_ui->calendarWidget->setDays(m_edits.merged(days, calendarDays(), year));
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
    m_ui->nameWidget->setColor(QColor(m_schedule.color));
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
    connect(m_ui->employeeCard, &EmployeeCard::photoRequest, this, &PersonalScheduleEditDialog::photoRequest);
}
