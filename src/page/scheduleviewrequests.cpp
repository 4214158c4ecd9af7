// What the page asks of the store and of other pages, each request beside what becomes of its answer.
#include "scheduleview.h"

#include "calendarwizardpage.h"
#include "hostcommands.h"
#include "localstorage.h"
#include "schedulefactory.h"
#include "personalcalendarwizardspage.h"
#include "personalemployeewizardpage.h"
#include "personalscheduleeditdialog.h"
#include "employeeschedules.h"
#include "personalschedulewizard.h"
#include "rolecontainer.h"
#include "scheduleeditdialog.h"
#include "schedulemodel.h"
#include "scheduleutil.h"
#include "schedulewizard.h"
#include "shiftwizardpage.h"
#include "svc.h"
#include "tq5sdkdata.h"
#include "tqdatastream.h"
#include "tqglobals.h"
#include "ui_scheduleview.h"

#include <QLoggingCategory>
#include <QMessageBox>

using orvex::LocalStorage;
using scheduleview::RoleContainer;

namespace {

/// First and last of the dates whose \a days are stored with a schedule; null for a type that has none. A record
/// without a start date takes the period of its first day.
QPair<QDate, QDate> calendarPeriod(const orvex::SCHEDULE_DATA &schedule,
                                   const QList<orvex::SCHEDULE_CALENDAR_DAY> &days)
{
    const QDate date = schedule.startDate.isValid() ? schedule.startDate : days.value(0).date;
    switch (schedule.type) {
    case orvex::ScheduleCalendar:
        return {QDate(date.year(), 1, 1), QDate(date.year(), 12, 31)};
    case orvex::SchedulePersonal:
        return {QDate(date.year(), date.month(), 1), ScheduleUtil::lastOfMonth(date)};
    default:
        return {};
    }
}

/// Logs a refusal.
bool isRefused(bool granted)
{
    if (!granted)
        qCWarning(svc()) << "the user has no rights";
    return !granted;
}

} // namespace

QString ScheduleView::newScheduleName() const
{
    constexpr int MatchesAtMost = 32;
    const QString base = tr("Новый график работы");
    const auto matches = m_model->match(m_model->index(0, ScheduleModel::NameColumn), Qt::DisplayRole, base,
                                        MatchesAtMost, Qt::MatchStartsWith | Qt::MatchWrap);
    qint64 highest = 0;
    for (const auto &match : matches) {
        QString rest = match.data().toString();
        highest = qMax<qint64>(highest, rest.remove(base).toInt());
    }
    return QStringLiteral("%1 %2").arg(base, QString::number(highest + 1));
}

void ScheduleView::appendSchedule()
{
    if (isRefused(RoleContainer::canCreate()))
        return;
    const auto wizard = new ScheduleWizard(this);
    wizard->setScheduleName(newScheduleName());
    connect(wizard, &ScheduleWizard::showShiftGuides, this, &ScheduleView::showShiftGuides);
    connect(wizard, &ScheduleWizard::createFixedSchedule, this, &ScheduleView::createFixedSchedule);
    connect(wizard, &ScheduleWizard::createShiftSchedule, this, &ScheduleView::createShiftSchedule);
    connect(wizard, &ScheduleWizard::createUnregulSchedule, this, &ScheduleView::createUnregulSchedule);
    connect(wizard, &ScheduleWizard::createCalendarSchedule, this, &ScheduleView::createCalendarSchedule);
    openWizard(wizard);
}

void ScheduleView::openWizard(CreationWizard *wizard)
{
    wizard->setAttribute(Qt::WA_DeleteOnClose);
    wizard->setWindowModality(Qt::WindowModal);
    wizard->setModal(true);
    wizard->show();
}

void ScheduleView::createFixedSchedule()
{
    if (const auto wizard = qobject_cast<ScheduleWizard *>(sender()))
        sendNewSchedule({scheduleview::fixedSchedule(*wizard->fixedPage(), QDate::currentDate()), {}, wizard});
}

void ScheduleView::createShiftSchedule()
{
    if (const auto wizard = qobject_cast<ScheduleWizard *>(sender()))
        sendNewSchedule({scheduleview::shiftSchedule(*wizard->shiftPage()), {}, wizard});
}

void ScheduleView::createUnregulSchedule()
{
    if (const auto wizard = qobject_cast<ScheduleWizard *>(sender())) {
        const QDate startDate = wizard->shiftPage()->dateStart();
        sendNewSchedule({scheduleview::freeSchedule(*wizard->freePage(), startDate), {}, wizard});
    }
}

void ScheduleView::createCalendarSchedule()
{
    if (const auto wizard = qobject_cast<ScheduleWizard *>(sender())) {
        const auto page = wizard->calendarPage();
        sendNewSchedule({scheduleview::calendarSchedule(*page), page->days(), wizard});
    }
}

void ScheduleView::appendPersonalSchedule()
{
    if (isRefused(RoleContainer::canCreate()))
        return;
    const auto wizard = new PersonalScheduleWizard(this);
    connect(wizard, &PersonalScheduleWizard::showShiftGuides, this, &ScheduleView::showShiftGuides);
    connect(wizard, &PersonalScheduleWizard::createPersonalSchedule, this, &ScheduleView::createPersonalSchedule);
    connect(wizard, &PersonalScheduleWizard::photoRequest, this, &ScheduleView::requestPhoto);
    openWizard(wizard);
}

void ScheduleView::createPersonalSchedule()
{
    const auto wizard = qobject_cast<PersonalScheduleWizard *>(sender());
    if (!wizard)
        return;
    const quint32 workerId = wizard->employeePage()->employeeId();
    const auto worker = LocalStorage::instance()->constObject(workerId, orvex::SUBJECT_DATANAME);
    const auto page = wizard->calendarPage();
    const NewSchedule schedule{scheduleview::personalSchedule(worker, page->date(), page->color()), page->days(),
                               wizard};
    if (worker.isNull()) {
        qCWarning(svc()) << "employee of personal schedule not found" << workerId;
        reportCreation(schedule, false, tr("Сотрудник удалён, индивидуальный график не создан"));
    } else if (scheduleview::hasPersonalSchedule(workerId, page->date())) {
        qCWarning(svc()) << "found double for personal schedule" << workerId << page->date();
        const QString month = QLocale().toString(page->date(), QStringLiteral("MMMM yyyy"));
        reportCreation(
            schedule, false,
            tr("Индивидуальный график для %1 за %2 уже существует").arg(TQGlobals::objectName(worker), month));
    } else {
        sendNewSchedule(schedule);
    }
}

void ScheduleView::sendNewSchedule(const NewSchedule &schedule)
{
    m_sdk->addSchedule(schedule.record,
                       [this, schedule](Command &command) { scheduleInsertResult(command, schedule); });
}

void ScheduleView::scheduleInsertResult(Command &command, const NewSchedule &schedule)
{
    const QString error = tr("Ошибка добавления графика работ");
    if (reportFailure(command, "create schedule error", error)) {
        reportCreation(schedule, false, error);
        // The wizard covers the pop-up, which shows the reason too.
        if (schedule.wizard)
            schedule.wizard->setDetails(failureReason(command));
        return;
    }
    qint32 id = 0;
    if (!readPayload(command.payload(), id)) {
        qCWarning(svc()) << "broken create schedule reply";
        showPopupCriticalMessage(error, 0);
        reportCreation(schedule, false, error);
        return;
    }
    m_awaitedId = quint32(id);
    const auto daysStored = [this, schedule](Command &reply) { calendarDaysInsertResult(reply, schedule); };
    if (!sendCalendarDays(id, schedule.record, schedule.days, daysStored))
        reportCreation(schedule, true, {});
}

void ScheduleView::calendarDaysInsertResult(Command &command, const NewSchedule &schedule)
{
    reportCreation(schedule, command.isSuccess(), {});
    if (reportFailure(command, "create schedule days error", tr("Ошибка добавления графика работ")))
        reportMissingDays(schedule, failureReason(command));
}

void ScheduleView::reportCreation(const NewSchedule &schedule, bool ok, const QString &message)
{
    QMetaObject::Connection toWizard;
    // Queued: the wizard shows its last page before the outcome arrives there.
    if (schedule.wizard)
        toWizard = connect(this, &ScheduleView::createScheduleFinished, schedule.wizard, &CreationWizard::reportOutcome,
                           Qt::QueuedConnection);
    emit createScheduleFinished(ok, message);
    disconnect(toWizard);
}

void ScheduleView::reportMissingDays(const NewSchedule &schedule, const QString &reason)
{
    constexpr int NameAtMost = 80;
    QString name = schedule.record.name.simplified();
    if (name.size() > NameAtMost)
        name = name.left(NameAtMost) + QStringLiteral("…");
    const QString text =
        tr("График работ «%1» создан, но его дни не сохранены. Откройте график и задайте дни ещё раз.").arg(name);
    if (schedule.wizard)
        schedule.wizard->setDetails(reason.isEmpty() ? text : text + QLatin1Char('\n') + reason);
    else
        showPopupCriticalMessage(text, 0);
}

void ScheduleView::editSchedule(qint32 id)
{
    if (isRefused(RoleContainer::canUpdate()))
        return;
    const auto record = editedRecord(id);
    if (record.id == 0) {
        qCWarning(svc()) << "schedule not found" << id;
        return;
    }
    if (record.type != orvex::SchedulePersonal) {
        runEditor(new ScheduleEditDialog(record, this));
        return;
    }
    const auto dialog = new PersonalScheduleEditDialog(record, this);
    connect(dialog, &PersonalScheduleEditDialog::photoRequest, this, &ScheduleView::requestPhoto);
    runEditor(dialog);
}

void ScheduleView::editPersonalSchedule()
{
    editSchedule();
}

template <class Dialog> void ScheduleView::runEditor(Dialog *editor)
{
    // The page may go while the dialog is open, and takes the dialog with it.
    const QPointer<Dialog> dialog = editor;
    connect(dialog, &Dialog::calendarDaysRequest, this, &ScheduleView::sendGetCalandarDays);
    connect(this, &ScheduleView::calandarDaysReceived, dialog, &Dialog::setCalendarDays);
    connect(dialog, &Dialog::showShiftGuides, this, &ScheduleView::showShiftGuides);
    connect(this, &ScheduleView::connectionRestored, dialog, &Dialog::requestMissingDays);
    const bool accepted = dialog->exec() == QDialog::Accepted;
    if (!dialog)
        return;
    if (accepted) {
        // Kept with the request: the operator may have edited another schedule before its answer comes.
        const auto edited = dialog->schedule();
        const auto days = dialog->calendarDays();
        m_sdk->updateSchedule(edited,
                              [this, edited, days](Command &command) { scheduleUpdateResult(command, edited, days); });
    }
    dialog->deleteLater();
}

orvex::SCHEDULE_DATA ScheduleView::editedRecord(qint32 id) const
{
    if (!m_model)
        return {};
    return id == 0 ? m_ui->scheduleView->recordOf(m_ui->scheduleView->currentIndex().row())
                   : m_model->record(m_model->row(id));
}

void ScheduleView::scheduleUpdateResult(Command &command, const orvex::SCHEDULE_DATA &record,
                                        const QList<orvex::SCHEDULE_CALENDAR_DAY> &days)
{
    if (reportFailure(command, "update schedule error", tr("Ошибка обновления графика работ")))
        return;
    sendCalendarDays(record.id, record, days, [this](Command &reply) { calendarDaysUpdateResult(reply); });
}

void ScheduleView::calendarDaysUpdateResult(Command &command)
{
    reportFailure(command, "update schedule days error", tr("Ошибка обновления графика работ"));
}

bool ScheduleView::sendCalendarDays(qint32 id, const orvex::SCHEDULE_DATA &record,
                                    const QList<orvex::SCHEDULE_CALENDAR_DAY> &days, const Handler &reply)
{
    const auto period = calendarPeriod(record, days);
    if (period.first.isNull())
        return false;
    m_sdk->updateScheduleCalendar(id, period.first, period.second, days, reply);
    return true;
}

void ScheduleView::deleteSchedule()
{
    if (isRefused(RoleContainer::canDelete()))
        return;
    const auto rows = m_ui->scheduleView->selectedRows();
    if (rows.isEmpty())
        return;
    QList<unsigned int> ids;
    for (const int row : rows)
        ids.append(unsigned(m_ui->scheduleView->recordOf(row).id));

    // The page may go while the question is open, and takes it along.
    const QPointer<QMessageBox> box = new QMessageBox(QMessageBox::Question, tr("Удаление"), deleteQuestion(rows),
                                                      QMessageBox::Ok | QMessageBox::Cancel, this);
    box->setDefaultButton(QMessageBox::Cancel);
    // A name is what it is, even if it looks like markup.
    box->setTextFormat(Qt::PlainText);
    const bool confirmed = box->exec() == QMessageBox::Ok;
    if (!box)
        return;
    if (confirmed)
        m_sdk->removeSchedules(ids, [this](Command &command) { scheduleRemoveResult(command); });
    box->deleteLater();
}

void ScheduleView::deletePersonalSchedule()
{
    deleteSchedule();
}

QString ScheduleView::deleteQuestion(const QList<int> &rows) const
{
    if (rows.size() == 1)
        return tr("Удалить")
            + QStringLiteral(" %1 \"%2\"?").arg(tr("график работы"), m_ui->scheduleView->recordOf(rows.first()).name);
    return tr("Удалить") + QStringLiteral(" %1 %2?").arg(QString::number(rows.size()), tr("графиков(а) работ"));
}

void ScheduleView::scheduleRemoveResult(Command &command)
{
    reportFailure(command, "delete schedule error", tr("Ошибка удаления графика работ"));
}

void ScheduleView::sendGetCalandarDays(qint32 id, int year)
{
    const QDate first(year, 1, 1);
    const QDate last(year, 12, 31);
    qCDebug(svc()) << "get calendar days" << id << first << last;
    m_sdk->getScheduleCalendar({id}, first, last, [this](Command &command) { calendarDaysReadResult(command); });
}

void ScheduleView::calendarDaysReadResult(Command &command)
{
    if (reportFailure(command, "read calendar days error", tr("Ошибка чтения расписания графика работ")))
        return;
    QList<int> ids;
    QDate first;
    QDate last;
    QHash<int, QList<orvex::SCHEDULE_CALENDAR_DAY>> days;
    if (!readPayload(command.payload(), ids, first, last, days))
        qCWarning(svc()) << "broken calendar days reply";
    else if (!ids.isEmpty())
        emit calandarDaysReceived(ids.first(), days.value(ids.first()));
}

void ScheduleView::requestPhoto(quint32 workerId)
{
    const QString name = db::param::PHOTO;
    const auto md5 = LocalStorage::instance()->blobMd5(workerId, name);
    m_sdk->getBlobDataChange({{workerId, name, md5}}, [this](Command &command) { blobDataRead(command); });
}

void ScheduleView::blobDataRead(Command &command)
{
    if (reportFailure(command, "blob data read error", {}))
        return;
    QHash<quint32, QHash<QString, QByteArray>> blobs;
    if (!readPayload(command.payload(), blobs)) {
        qCWarning(svc()) << "broken blob data reply";
        return;
    }
    bool hasEntries = false;
    for (auto it = blobs.cbegin(); it != blobs.cend(); ++it) {
        qCDebug(svc()) << "read blob" << it.key() << it->keys();
        hasEntries = hasEntries || !it->isEmpty();
        const auto photo = it->constFind(db::param::PHOTO);
        if (photo != it->constEnd())
            LocalStorage::instance()->setBlob(it.key(), photo.key(), *photo);
    }
    if (hasEntries)
        updateInfoPanelDelayed();
}

void ScheduleView::showShiftGuides()
{
    auto command = newCommand();
    command.setName(hostcommand::ShowPrefix + QStringLiteral("guidesview"));
    command.setPayload(writePayload(QString(orvex::SCHEDULE_SHIFT_DATANAME)));
    sendQuery(command, [this](Command &reply) { showGuidesResult(reply); });
}

void ScheduleView::showGuidesResult(Command &command)
{
    if (command.isSuccess())
        return;
    QString text;
    if (!readPayload(command.payload(), text))
        text = QStringLiteral("without a text");
    qCWarning(svc()).noquote() << "show guides error" << command.result() << text;
}

void ScheduleView::showDialog(Command &command)
{
    qint32 id = 0;
    const bool read = readPayload(command.payload(), id);
    qCDebug(svc()) << "show dialog" << id;
    if (!RoleContainer::canShow() || !RoleContainer::canUpdate()) {
        qCWarning(svc()) << "no rights to show dialog";
        command.setPayload(writePayload(QString(hostcommand::NoRights)));
        sendReply(command);
        return;
    }
    if (read && m_model && m_model->row(id) >= 0)
        emit showEditDialog(id);
    else
        qCWarning(svc()) << "schedule not found" << id;
}

bool ScheduleView::reportFailure(const Command &command, const char *key, const QString &popup)
{
    if (command.isSuccess())
        return false;
    qCWarning(svc()) << key << command.result();
    if (!popup.isEmpty())
        showPopupCriticalMessage(popup, 0);
    return true;
}
