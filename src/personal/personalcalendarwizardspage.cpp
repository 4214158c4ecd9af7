#include "personalcalendarwizardspage.h"

#include "employeeschedules.h"
#include "localstorage.h"
#include "personalemployeewizardpage.h"
#include "scheduleutil.h"
#include "ui_personalcalendarwizardspage.h"

#include <algorithm>

using orvex::LocalStorage;

PersonalCalendarWizardsPage::PersonalCalendarWizardsPage(const PersonalEmployeeWizardPage *employeePage,
                                                         QWidget *parent)
    : RequestWizardPage(parent)
    , m_ui(std::make_unique<Ui::PersonalCalendarWizardsPage>())
    , m_employeePage(employeePage)
{
    m_ui->setupUi(this);
    m_ui->nameWidget->hide();
    connect(m_ui->calendarWidget, &CalendarMonthWidget::showShiftGuides, this,
            &PersonalCalendarWizardsPage::showShiftGuides);
    m_ui->calendarWidget->setColor(color());
    connect(m_ui->nameWidget, &ScheduleNameWidget::colorChanged, m_ui->calendarWidget, &CalendarMonthWidget::setColor);
    connectContents();
}

PersonalCalendarWizardsPage::~PersonalCalendarWizardsPage() = default;

QDate PersonalCalendarWizardsPage::date() const
{
    return m_ui->calendarWidget->date();
}

QList<orvex::SCHEDULE_CALENDAR_DAY> PersonalCalendarWizardsPage::days() const
{
    // The calendar also holds the marks of other months that the operator has visited.
    const QDate first = date();
    const QDate last = ScheduleUtil::lastOfMonth(first);
    auto days = m_ui->calendarWidget->days();
    const auto isOther = [&](const auto &day) { return day.date < first || day.date > last; };
    days.erase(std::remove_if(days.begin(), days.end(), isOther), days.end());
    return days;
}

QString PersonalCalendarWizardsPage::color() const
{
    return m_ui->nameWidget->colorName();
}

void PersonalCalendarWizardsPage::initializePage()
{
    m_ui->employeeCard->setEmployee(m_employeePage->employeeId());
    m_ui->nameWidget->setName(m_ui->employeeCard->employeeName());
    updateNotice();
}

bool PersonalCalendarWizardsPage::isComplete() const
{
    return m_ui->employeeCard->isKnown();
}

void PersonalCalendarWizardsPage::requestSchedule()
{
    emit createPersonalSchedule();
}

void PersonalCalendarWizardsPage::connectContents()
{
    connect(m_ui->employeeCard, &EmployeeCard::photoRequest, this, &PersonalCalendarWizardsPage::photoRequest);
    connect(m_ui->employeeCard, &EmployeeCard::employeeChanged, this, &QWizardPage::completeChanged);
    connect(m_ui->calendarWidget, &CalendarMonthWidget::dateChanged, this, &PersonalCalendarWizardsPage::updateNotice);
    const auto *storage = LocalStorage::instance();
    connect(storage, &LocalStorage::scheduleChanged, this, &PersonalCalendarWizardsPage::schedulesChanged);
    // A removal is signalled before the record is removed.
    connect(storage, &LocalStorage::scheduleRemoved, this, &PersonalCalendarWizardsPage::updateNotice,
            Qt::QueuedConnection);
}

void PersonalCalendarWizardsPage::schedulesChanged(const QList<quint32> &ids)
{
    const auto schedules = LocalStorage::instance()->schedules();
    const quint32 employeeId = m_ui->employeeCard->employeeId();
    const auto isOfEmployee = [&](quint32 id) { return schedules.value(id).workerId == employeeId; };
    if (std::any_of(ids.cbegin(), ids.cend(), isOfEmployee))
        updateNotice();
}

void PersonalCalendarWizardsPage::updateNotice()
{
    const quint32 employeeId = m_ui->employeeCard->employeeId();
    const bool taken = employeeId != 0 && scheduleview::hasPersonalSchedule(employeeId, date());
    m_ui->employeeCard->setNotice(taken ? tr("На этот месяц график уже есть.") : QString());
}
