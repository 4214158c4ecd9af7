#include "schedulecreation.h"

#include "employeeschedules.h"
#include "localstorage.h"
#include "personalcalendarwizardspage.h"
#include "personalemployeewizardpage.h"
#include "personalschedulewizard.h"
#include "schedulefactory.h"
#include "schedulerequests.h"
#include "svc.h"
#include "tqdatastream.h"
#include "tqglobals.h"

#include <QLocale>
#include <QLoggingCategory>

namespace scheduleview {

ScheduleCreation::ScheduleCreation(ScheduleRequests *requests, QObject *parent)
    : QObject(parent)
    , m_requests(requests)
{
}

void ScheduleCreation::create(const NewSchedule &schedule)
{
    m_requests->addSchedule(schedule.record,
                            [this, schedule](Command &command) { scheduleInsertResult(command, schedule); });
}

void ScheduleCreation::createPersonal(PersonalScheduleWizard *wizard)
{
    const quint32 id = wizard->employeePage()->employeeId();
    const auto employee = orvex::LocalStorage::instance()->constObject(id, orvex::SUBJECT_DATANAME);
    const auto *page = wizard->calendarPage();
    const QDate date = page->date();
    if (employee.isNull()) {
        qCWarning(svc()) << "employee of personal schedule not found" << id;
        emit finished(wizard, false, tr("Сотрудник удалён, индивидуальный график не создан"));
    } else if (hasPersonalSchedule(id, date)) {
        qCWarning(svc()) << "found double for personal schedule" << id << date;
        const QString month = QLocale().toString(date, QStringLiteral("MMMM yyyy"));
        emit finished(
            wizard, false,
            tr("Индивидуальный график для %1 за %2 уже существует").arg(TQGlobals::objectName(employee), month));
    } else {
        create({personalSchedule(employee, date, page->color()), page->days(), wizard});
    }
}

void ScheduleCreation::scheduleInsertResult(const Command &command, const NewSchedule &schedule)
{
    const QString error = tr("Ошибка добавления графика работ");
    if (m_requests->reportFailure(command, "create schedule error", error)) {
        emit finished(schedule.wizard, false, error);
        // The wizard covers the pop-up, so it shows the reason itself.
        if (schedule.wizard)
            schedule.wizard->setDetails(failureReason(command));
        return;
    }
    qint32 id = 0;
    if (!readPayload(command.payload(), id)) {
        qCWarning(svc()) << "broken create schedule reply";
        emit failed(error);
        emit finished(schedule.wizard, false, error);
        return;
    }
    emit recordAdded(quint32(id));
    const auto daysStored = [this, schedule](Command &reply) { calendarDaysInsertResult(reply, schedule); };
    if (!m_requests->storeCalendarDays(id, schedule.record, schedule.days, daysStored))
        emit finished(schedule.wizard, true, {});
}

void ScheduleCreation::calendarDaysInsertResult(const Command &command, const NewSchedule &schedule)
{
    emit finished(schedule.wizard, command.isSuccess(), {});
    if (m_requests->reportFailure(command, "create schedule days error", tr("Ошибка добавления графика работ")))
        reportMissingDays(schedule, failureReason(command));
}

void ScheduleCreation::reportMissingDays(const NewSchedule &schedule, const QString &reason)
{
    constexpr int MaximumName = 80;
    QString name = schedule.record.name.simplified();
    if (name.size() > MaximumName)
        name = name.left(MaximumName) + QStringLiteral("…");
    const QString text =
        tr("График работ «%1» создан, но его дни не сохранены. Откройте график и задайте дни ещё раз.").arg(name);
    if (schedule.wizard)
        schedule.wizard->setDetails(reason.isEmpty() ? text : text + QLatin1Char('\n') + reason);
    else
        emit failed(text);
}

} // namespace scheduleview
