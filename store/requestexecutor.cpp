#include "requestexecutor.h"

#include "connection.h"
#include "objects.h"
#include "records.h"
#include "requests.h"
#include "rolenames.h"
#include "schedulequeries.h"
#include "tqdatastream.h"
#include "validation.h"

#include <QCryptographicHash>
#include <QDateTime>
#include <QLocale>
#include <QSet>

#include <algorithm>

namespace store {

RequestExecutor::RequestExecutor(Connection &connection, CreatedSchedules &createdHere)
    : m_connection(connection)
    , m_createdHere(createdHere)
{
}

Command RequestExecutor::execute(const Command &request)
{
    const Entry entry = entryOf(request.name());
    if (!entry.handler)
        return Outcome{ResultNotFound, tr("Хранилище не знает запроса %1.").arg(request.name()), {}}.replyTo(request);

    QByteArray payload;
    Outcome outcome = entry.writes ? write(request, entry.handler, payload) : read(request, entry.handler, payload);
    if (!outcome.ok())
        return outcome.replyTo(request);
    Command reply = request;
    reply.setResult(ResultSuccess);
    reply.setPayload(payload);
    return reply;
}

Outcome RequestExecutor::roles(QStringList &roles)
{
    roles.clear();
    return m_connection.transact(Transaction::Read, [this, &roles]() -> Outcome {
        Query select = m_connection.query("roles");
        if (!select.exec())
            return m_connection.failure();
        while (select.next())
            roles.append(select.text(0));
        return {};
    });
}

RequestExecutor::Entry RequestExecutor::entryOf(const QString &name)
{
    static const QHash<QString, Entry> entries{
        {request::AddSchedule, {&RequestExecutor::addSchedule, true}},
        {request::UpdateSchedule, {&RequestExecutor::updateSchedule, true}},
        {request::RemoveSchedules, {&RequestExecutor::removeSchedules, true}},
        {request::GetScheduleCalendar, {&RequestExecutor::getCalendar, false}},
        {request::UpdateScheduleCalendar, {&RequestExecutor::updateCalendar, true}},
        {request::GetBlobDataChange, {&RequestExecutor::getBlobs, false}},
    };
    return entries.value(name);
}

Outcome RequestExecutor::read(const Command &request, Handler handler, QByteArray &reply)
{
    return m_connection.transact(Transaction::Read, [&]() -> Outcome {
        Outcome allowed = requireRole(db::role::SCHEDULE_SHOW);
        return allowed.ok() ? (this->*handler)(request.payload(), reply) : allowed;
    });
}

Outcome RequestExecutor::write(const Command &request, Handler handler, QByteArray &reply)
{
    if (request.id().isNull())
        return {ResultInvalidData, tr("У запроса %1 нет номера.").arg(request.name()), {}};
    Outcome outcome = m_connection.transact(Transaction::Write, [&]() -> Outcome {
        if (findLogged(request.id(), reply))
            return {};
        const Outcome done = (this->*handler)(request.payload(), reply);
        return done.ok() ? logRequest(request, reply) : done;
    });
    if (!outcome.ok())
        return outcome;
    rememberCreation(request, reply);
    return outcome;
}

/// Includes requests answered from the log: their first connection was lost before the reply.
void RequestExecutor::rememberCreation(const Command &request, const QByteArray &reply)
{
    qint32 id = 0;
    if (request.name() == request::AddSchedule && readPayload(reply, id)) {
        m_createdHere.insert(quint32(id), request.id());
    } else if (request.name() == request::UpdateScheduleCalendar) {
        TQDataStream stream(request.payload());
        stream >> id;
        m_createdHere.remove(quint32(id));
    }
}

bool RequestExecutor::findLogged(const QUuid &request, QByteArray &reply)
{
    Query select = m_connection.query("request_find");
    select.bind(":request_id", request.toString(QUuid::WithoutBraces)).bind(":login", m_connection.driver().login());
    if (!select.execFirst())
        return false;
    reply = select.bytes(0);
    return true;
}

Outcome RequestExecutor::logRequest(const Command &request, const QByteArray &reply)
{
    const bool logged = m_connection.query("request_insert")
                            .bind(":request_id", request.id().toString(QUuid::WithoutBraces))
                            .bind(":login", m_connection.driver().login())
                            .bind(":result", ResultSuccess)
                            .bind(":reply", reply)
                            .bind(":now", m_connection.now())
                            .exec();
    return logged ? Outcome() : m_connection.failure();
}

Outcome RequestExecutor::addSchedule(const QByteArray &payload, QByteArray &reply)
{
    orvex::SCHEDULE_DATA schedule;
    if (Outcome checked = readSchedule(payload, db::role::SCHEDULE_CREATE, schedule); !checked.ok())
        return checked;
    schedule.id = 0;
    if (Outcome checked = checkReferences(schedule); !checked.ok())
        return checked;
    const quint32 id = schedulequeries::insertSchedule(m_connection, schedule);
    if (id == 0)
        return m_connection.failure();
    reply = writePayload(qint32(id));
    return {};
}

Outcome RequestExecutor::updateSchedule(const QByteArray &payload, QByteArray &)
{
    orvex::SCHEDULE_DATA schedule;
    if (Outcome checked = readSchedule(payload, db::role::SCHEDULE_UPDATE, schedule); !checked.ok())
        return checked;
    if (Outcome checked = checkReferences(schedule); !checked.ok())
        return checked;
    Query update = m_connection.query("schedule_update");
    records::bindSchedule(update, records::withIdentifiers(schedule), m_connection);
    update.bind(":id", schedule.id).bind(":version", schedule.version);
    if (!update.exec())
        return m_connection.failure();
    return update.rowsAffected() == 1 ? Outcome() : changedMeanwhile(quint32(schedule.id));
}

Outcome RequestExecutor::removeSchedules(const QByteArray &payload, QByteArray &)
{
    QList<quint32> ids;
    if (!readPayload(payload, ids))
        return corrupt();
    if (Outcome allowed = requireRole(db::role::SCHEDULE_DELETE); !allowed.ok())
        return allowed;
    if (Outcome checked = checkExist(ids); !checked.ok())
        return checked;
    // Employees lose their main schedule if it is removed.
    for (const char *step : {"schedules_detach", "schedules_delete"}) {
        if (!m_connection.query(step).bindIds(ids).exec())
            return m_connection.failure();
    }
    return {};
}

Outcome RequestExecutor::getCalendar(const QByteArray &payload, QByteArray &reply)
{
    QList<qint32> ids;
    QDate first;
    QDate last;
    if (!readPayload(payload, ids, first, last))
        return corrupt();
    QHash<qint32, QList<orvex::SCHEDULE_CALENDAR_DAY>> calendars;
    // A calendar can show the year 0, which has no dates.
    if (!first.isValid() && !last.isValid()) {
        reply = writePayload(ids, first, last, calendars);
        return {};
    }
    if (!first.isValid() || !last.isValid())
        return {ResultInvalidData, tr("Период календаря указан неверно."), {}};

    const ProductionModes production = productionModes(first, last);
    for (const qint32 id : qAsConst(ids)) {
        Query head = m_connection.query("schedule_head");
        if (!head.bind(":id", id).execFirst())
            continue; // removed meanwhile: no days in the reply
        auto days = schedulequeries::calendarDays(m_connection, quint32(id), first, last);
        const bool useHolidays = head.number(0) != 0;
        if (useHolidays)
            applyHolidays(production, days);
        calendars.insert(id, days);
    }
    reply = writePayload(ids, first, last, calendars);
    return {};
}

Outcome RequestExecutor::updateCalendar(const QByteArray &payload, QByteArray &)
{
    qint32 id = 0;
    QDate first;
    QDate last;
    QList<orvex::SCHEDULE_CALENDAR_DAY> days;
    if (!readPayload(payload, id, first, last, days))
        return corrupt();
    if (Outcome allowed = requireCalendarRight(quint32(id)); !allowed.ok())
        return allowed;
    for (const auto &day : qAsConst(days)) {
        if (const QString fault = Validation::fault(day); !fault.isEmpty())
            return {ResultInvalidData, fault, {}};
    }
    if (Outcome checked = checkGuideShifts(days); !checked.ok())
        return checked;
    if (!m_connection.query("schedule_head").bind(":id", id).execFirst())
        return noSchedule();
    return saveDays(quint32(id), schedulequeries::daysToStore(days));
}

Outcome RequestExecutor::getBlobs(const QByteArray &payload, QByteArray &reply)
{
    QList<orvex::_BLOB_DATA_RESQUEST> requests;
    if (!readPayload(payload, requests))
        return corrupt();
    const QByteArray md5OfNothing = QCryptographicHash::hash({}, QCryptographicHash::Md5);

    QHash<quint32, QHash<QString, QByteArray>> blobs;
    for (const auto &wanted : qAsConst(requests)) {
        const auto find = [&](const char *statement) {
            Query select = m_connection.query(statement);
            select.bind(":object_id", wanted.id).bind(":name", wanted.name);
            return select.execFirst() ? select.bytes(0) : QByteArray();
        };
        const QByteArray md5 = find("blob_md5");
        // A removed blob is sent as an empty one, once: from then on the client has the checksum of nothing.
        const bool isCurrent = md5.isEmpty() ? wanted.md5.isEmpty() || wanted.md5 == md5OfNothing : wanted.md5 == md5;
        if (isCurrent)
            continue;
        // The client sends the checksum of the data. If the stored checksum is wrong, comparing with that alone would
        // send the data every time.
        const QByteArray data = find("blob_data");
        if (QCryptographicHash::hash(data, QCryptographicHash::Md5) != wanted.md5)
            blobs[wanted.id].insert(wanted.name, data);
    }
    reply = writePayload(blobs);
    return {};
}

Outcome RequestExecutor::readSchedule(const QByteArray &payload, const QString &role, orvex::SCHEDULE_DATA &schedule)
{
    if (!readPayload(payload, schedule))
        return corrupt();
    if (Outcome allowed = requireRole(role); !allowed.ok())
        return allowed;
    const QString fault = Validation::fault(schedule);
    return fault.isEmpty() ? Outcome() : Outcome{ResultInvalidData, fault, {}};
}

Outcome RequestExecutor::checkExist(const QList<quint32> &ids)
{
    const int wanted = QSet<quint32>(ids.cbegin(), ids.cend()).size();
    Query count = m_connection.query("schedules_count");
    if (!count.bindIds(ids).execFirst())
        return m_connection.failure();
    if (count.number(0) == wanted)
        return {};
    if (wanted == 1)
        return noSchedule();
    return {ResultNotFound, tr("Некоторых из этих графиков работ уже нет."), tr("Повторите удаление остальных.")};
}

Outcome RequestExecutor::checkReferences(const orvex::SCHEDULE_DATA &schedule)
{
    if (schedule.workerId != 0 && !m_connection.query("subject_find").bind(":id", schedule.workerId).execFirst()) {
        return {ResultInvalidData, tr("Сотрудника с номером %1 нет.").arg(schedule.workerId),
                tr("Выберите другого сотрудника.")};
    }
    if (schedule.type != orvex::SchedulePersonal)
        return {};
    Query existing = m_connection.query("personal_find");
    existing.bind(":worker_id", schedule.workerId).bindDate(":start_date", schedule.startDate).bind(":id", schedule.id);
    if (!existing.execFirst())
        return {};
    const QString month = QStringLiteral("%1 %2")
                              .arg(QLocale().standaloneMonthName(schedule.startDate.month()))
                              .arg(schedule.startDate.year());
    return {ResultInvalidData,
            tr("У сотрудника «%1» уже есть индивидуальный график за %2.").arg(existing.text(0), month),
            tr("Выберите другой месяц или измените имеющийся график на вкладке «Индивидуальные графики».")};
}

Outcome RequestExecutor::checkGuideShifts(const QList<orvex::SCHEDULE_CALENDAR_DAY> &days)
{
    QSet<quint32> ids;
    for (const auto &day : days) {
        if (day.shiftId != 0)
            ids.insert(day.shiftId);
    }
    Query count = m_connection.query("guide_shifts_count");
    if (ids.isEmpty() || (count.bindIds(ids.values()).execFirst() && count.number(0) == ids.size()))
        return {};
    return {ResultInvalidData, tr("В календаре есть смена, которой нет в справочнике смен."),
            tr("Откройте график заново и выберите другую смену.")};
}

Outcome RequestExecutor::saveDays(quint32 schedule, const QList<orvex::SCHEDULE_CALENDAR_DAY> &days)
{
    if (days.isEmpty())
        return {};
    const auto earlier = [](const auto &a, const auto &b) { return a.date < b.date; };
    const auto [first, last] = std::minmax_element(days.cbegin(), days.cend(), earlier);
    QHash<QDate, orvex::SCHEDULE_CALENDAR_DAY> stored;
    for (const auto &day : schedulequeries::calendarDays(m_connection, schedule, first->date, last->date))
        stored.insert(day.date, day);

    QList<orvex::SCHEDULE_CALENDAR_DAY> changed;
    for (const auto &day : days) {
        const auto old = stored.constFind(day.date);
        const bool isNew = old == stored.constEnd();
        if (day.revision != (isNew ? 0 : old->revision))
            return changedMeanwhile(schedule);
        if (isNew || !hasSameContent(day, *old))
            changed.append(day);
    }
    if (changed.isEmpty())
        return {};
    const bool saved = schedulequeries::storeCalendarDays(m_connection, schedule, changed)
        && m_connection.query("schedule_touch")
               .bind(":id", schedule)
               .bind(":login", m_connection.driver().login())
               .bind(":now", m_connection.now())
               .exec();
    return saved ? Outcome() : m_connection.failure();
}

RequestExecutor::ProductionModes RequestExecutor::productionModes(const QDate &first, const QDate &last)
{
    ProductionModes production;
    Query select = m_connection.query("production_days");
    if (!select.bindDate(":first", first).bindDate(":last", last).exec())
        return production;
    while (select.next())
        production.insert(select.date(0), select.number(1));
    return production;
}

void RequestExecutor::applyHolidays(const ProductionModes &production, QList<orvex::SCHEDULE_CALENDAR_DAY> &days)
{
    for (auto &day : days) {
        if (day.dayMode != orvex::DayByShift || !production.contains(day.date))
            continue;
        day.storedMode = day.dayMode;
        day.overlayMode = production.value(day.date);
        day.dayMode = day.overlayMode;
    }
}

Outcome RequestExecutor::requireRole(const QString &role)
{
    static const QHash<QString, const char *> refusals{
        {db::role::SCHEDULE_SHOW, QT_TR_NOOP("У вас нет права смотреть графики работ.")},
        {db::role::SCHEDULE_CREATE, QT_TR_NOOP("У вас нет права создавать графики работ.")},
        {db::role::SCHEDULE_UPDATE, QT_TR_NOOP("У вас нет права изменять графики работ.")},
        {db::role::SCHEDULE_DELETE, QT_TR_NOOP("У вас нет права удалять графики работ.")},
    };
    Query select = m_connection.query("roles");
    if (!select.exec())
        return m_connection.failure();
    while (select.next()) {
        if (select.text(0) == role)
            return {};
    }
    return {ResultNoRights, tr(refusals.value(role)), tr("Обратитесь к администратору.")};
}

Outcome RequestExecutor::requireCalendarRight(quint32 schedule)
{
    // After a reconnection the address may refer to another store, where the identifier is another user's schedule.
    QByteArray reply;
    const QUuid creation = m_createdHere.value(schedule);
    const bool isOwn = !creation.isNull() && findLogged(creation, reply) && reply == writePayload(qint32(schedule));
    if (isOwn && requireRole(db::role::SCHEDULE_CREATE).ok())
        return {};
    return requireRole(db::role::SCHEDULE_UPDATE);
}

Outcome RequestExecutor::changedMeanwhile(quint32 schedule)
{
    Query head = m_connection.query("schedule_head");
    if (!head.bind(":id", schedule).execFirst())
        return m_connection.failed() ? m_connection.failure() : noSchedule();
    const QDateTime savedAt = QDateTime::fromString(head.text(2), Qt::ISODateWithMs).toLocalTime();
    return {ResultChangedMeanwhile, tr("График работ «%1» изменён после того, как его прочитали.").arg(head.text(3)),
            tr("Его сохранил пользователь %1 %2. Откройте график заново и повторите изменения.")
                .arg(head.text(1), savedAt.toString(QStringLiteral("dd.MM.yyyy HH:mm:ss")))};
}

Outcome RequestExecutor::corrupt()
{
    return {ResultInvalidData, tr("Данные запроса повреждены, запрос не выполнен."), {}};
}

Outcome RequestExecutor::noSchedule()
{
    return {ResultNotFound, tr("Этого графика работ уже нет."), tr("Возможно, его удалили.")};
}

} // namespace store
