#include "schedulerequests.h"

#include "datanames.h"
#include "hostcommands.h"
#include "localstorage.h"
#include "scheduleutil.h"
#include "svc.h"
#include "tq5sdkdata.h"
#include "tqdatastream.h"
#include "tqplugininterface.h"

#include <QLoggingCategory>

using orvex::LocalStorage;
using orvex::SCHEDULE_DATA;

namespace scheduleview {

namespace {

/// The first and the last date of the calendar days of a schedule; null dates for a type that has none. A record
/// without a start date takes the period of its first day.
QPair<QDate, QDate> calendarPeriod(const SCHEDULE_DATA &schedule, const ScheduleRequests::Days &days)
{
    const QDate date = schedule.startDate.isValid() ? schedule.startDate : days.value(0).date;
    switch (schedule.type) {
    case orvex::ScheduleCalendar:
        return {QDate(date.year(), 1, 1), ScheduleUtil::lastOfYear(date)};
    case orvex::SchedulePersonal:
        return {QDate(date.year(), date.month(), 1), ScheduleUtil::lastOfMonth(date)};
    default:
        return {};
    }
}

} // namespace

ScheduleRequests::ScheduleRequests(tq5sdk::Data *sdk, TQPluginInterface *plugin, QObject *parent)
    : QObject(parent)
    , m_sdk(sdk)
    , m_plugin(plugin)
{
}

void ScheduleRequests::addSchedule(const SCHEDULE_DATA &record, const Handler &reply)
{
    m_sdk->addSchedule(record, reply);
}

void ScheduleRequests::updateSchedule(const SCHEDULE_DATA &record, const Days &days)
{
    // The values are kept with the request: the operator may edit another schedule before the reply arrives.
    m_sdk->updateSchedule(record,
                          [this, record, days](Command &command) { scheduleUpdateResult(command, record, days); });
}

void ScheduleRequests::removeSchedules(const QList<unsigned int> &ids)
{
    m_sdk->removeSchedules(ids, [this](Command &command) { scheduleRemoveResult(command); });
}

bool ScheduleRequests::storeCalendarDays(qint32 id, const SCHEDULE_DATA &record, const Days &days, const Handler &reply)
{
    const auto period = calendarPeriod(record, days);
    if (period.first.isNull())
        return false;
    m_sdk->updateScheduleCalendar(id, period.first, period.second, days, reply);
    return true;
}

void ScheduleRequests::readCalendarDays(qint32 id, int year)
{
    const QDate first(year, 1, 1);
    const QDate last = ScheduleUtil::lastOfYear(first);
    qCDebug(svc()) << "get calendar days" << id << first << last;
    m_sdk->getScheduleCalendar({id}, first, last, [this](Command &command) { calendarDaysReadResult(command); });
}

void ScheduleRequests::readPhoto(quint32 employeeId)
{
    const QString name = db::param::PHOTO;
    const auto md5 = LocalStorage::instance()->blobMd5(employeeId, name);
    m_sdk->getBlobDataChange({{employeeId, name, md5}}, [this](Command &command) { blobDataRead(command); });
}

void ScheduleRequests::showGuide(const QString &dataName)
{
    auto command = m_plugin->newCommand();
    command.setName(hostcommand::ShowPrefix + QStringLiteral("guidesview"));
    command.setPayload(writePayload(dataName));
    m_plugin->sendQuery(command, [this](Command &reply) { showGuidesResult(reply); });
}

bool ScheduleRequests::reportFailure(const Command &reply, const char *key, const QString &message)
{
    if (reply.isSuccess())
        return false;
    qCWarning(svc()) << key << reply.result();
    if (!message.isEmpty())
        emit failed(message);
    return true;
}

void ScheduleRequests::scheduleUpdateResult(const Command &command, const SCHEDULE_DATA &record, const Days &days)
{
    if (reportFailure(command, "update schedule error", tr("Ошибка обновления графика работ")))
        return;
    storeCalendarDays(record.id, record, days, [this](Command &reply) { calendarDaysUpdateResult(reply); });
}

void ScheduleRequests::calendarDaysUpdateResult(const Command &command)
{
    reportFailure(command, "update schedule days error", tr("Ошибка обновления графика работ"));
}

void ScheduleRequests::scheduleRemoveResult(const Command &command)
{
    reportFailure(command, "delete schedule error", tr("Ошибка удаления графика работ"));
}

void ScheduleRequests::calendarDaysReadResult(const Command &command)
{
    if (reportFailure(command, "read calendar days error", tr("Ошибка чтения расписания графика работ")))
        return;
    QList<int> ids;
    QDate first;
    QDate last;
    QHash<int, Days> days;
    if (!readPayload(command.payload(), ids, first, last, days))
        qCWarning(svc()) << "broken calendar days reply";
    else if (!ids.isEmpty())
        emit calendarDaysRead(ids.first(), first, days.value(ids.first()));
}

void ScheduleRequests::blobDataRead(const Command &command)
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
        emit photosRead();
}

void ScheduleRequests::showGuidesResult(const Command &command)
{
    if (command.isSuccess())
        return;
    QString text;
    if (!readPayload(command.payload(), text))
        text = QStringLiteral("without a text");
    qCWarning(svc()).noquote() << "show guides error" << command.result() << text;
}

} // namespace scheduleview
