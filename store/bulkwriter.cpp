#include "bulkwriter.h"

#include "databaseparts.h"
#include "records.h"
#include "schedulequeries.h"
#include "validation.h"

#include <QCryptographicHash>

namespace store {

namespace {

QString typeText(UnitType type)
{
    switch (type) {
    case UnitType::Root:
        return QStringLiteral("root");
    case UnitType::Firm:
        return QStringLiteral("firm");
    case UnitType::Department:
        break;
    }
    return QStringLiteral("department");
}

} // namespace

BulkWriter::BulkWriter(Database &database)
    : m_connection(database.m_parts ? &database.m_parts->connection : nullptr)
{
    m_outcome = m_connection ? m_connection->begin(Transaction::Write) : Connection::notOpen();
    m_begun = m_outcome.ok();
}

BulkWriter::~BulkWriter()
{
    if (m_begun)
        m_connection->rollback();
}

quint32 BulkWriter::addUnit(const Unit &unit)
{
    const quint32 id = newObject(QStringLiteral("unit"));
    if (id == 0)
        return 0;
    Query insert = m_connection->query("org_unit_insert");
    insert.bind(":id", id)
        .bindReference(":parent_id", unit.parent)
        .bind(":type", typeText(unit.type))
        .bind(":name", unit.name);
    return run(insert) ? id : 0;
}

quint32 BulkWriter::addEmployee(const Employee &employee)
{
    const quint32 id = newObject(QStringLiteral("subject"));
    if (id == 0)
        return 0;
    Query insert = m_connection->query("subject_insert");
    insert.bind(":id", id)
        .bind(":name", employee.name)
        .bind(":personnel_number", employee.personnelNumber)
        .bind(":position", employee.position)
        .bindReference(":unit_id", employee.unit)
        .bindReference(":schedule_id", employee.schedule)
        .bind(":state", employee.deleted ? QStringLiteral("d") : QString());
    return run(insert) ? id : 0;
}

quint32 BulkWriter::addGuideShift(const GuideShift &shift)
{
    if (!m_outcome.ok())
        return 0;
    quint32 id = 0;
    {
        Query insert = m_connection->query("schedule_shift_insert");
        insert.bind(":name", shift.name).bind(":code", shift.code).bind(":color", shift.color);
        if (!run(insert) || !insert.next())
            return 0;
        id = insert.id(0);
    }
    int position = 0;
    for (const auto &interval : shift.intervals) {
        Query insert = m_connection->query("shift_interval_insert");
        insert.bind(":shift_id", id)
            .bind(":position", position++)
            .bind(":start", interval.start)
            .bind(":finish", interval.finish);
        if (!run(insert))
            return 0;
    }
    return id;
}

quint32 BulkWriter::addSchedule(const orvex::SCHEDULE_DATA &schedule)
{
    if (!m_outcome.ok())
        return 0;
    if (const QString fault = Validation::fault(schedule); !fault.isEmpty()) {
        m_outcome = {ResultInvalidData, fault, {}};
        return 0;
    }
    const quint32 id = schedulequeries::insertSchedule(*m_connection, schedule);
    m_outcome = m_connection->failure();
    return id;
}

void BulkWriter::setMainSchedule(quint32 employee, quint32 schedule)
{
    if (!m_outcome.ok())
        return;
    Query update = m_connection->query("subject_set_schedule");
    run(update.bind(":id", employee).bindReference(":schedule_id", schedule));
}

void BulkWriter::setBlob(quint32 object, const QString &name, const QByteArray &data)
{
    if (!m_outcome.ok())
        return;
    Query insert = m_connection->query("blob_store");
    run(insert.bind(":object_id", object)
            .bind(":name", name)
            .bind(":md5", QCryptographicHash::hash(data, QCryptographicHash::Md5))
            .bind(":data", data));
}

void BulkWriter::setProductionDay(const ProductionDay &day)
{
    if (!m_outcome.ok())
        return;
    Query insert = m_connection->query("production_day_store");
    run(insert.bindDate(":date", day.date).bind(":mode", day.mode).bind(":note", day.note));
}

void BulkWriter::setCalendarDays(quint32 schedule, const QList<orvex::SCHEDULE_CALENDAR_DAY> &days)
{
    for (const auto &day : days) {
        const QString fault = Validation::fault(day);
        if (m_outcome.ok() && !fault.isEmpty())
            m_outcome = {ResultInvalidData, fault, {}};
    }
    if (!m_outcome.ok() || days.isEmpty())
        return;
    if (!schedulequeries::storeCalendarDays(*m_connection, schedule, schedulequeries::daysToStore(days)))
        m_outcome = m_connection->failure();
}

Outcome BulkWriter::commit()
{
    if (m_begun && m_outcome.ok()) {
        m_outcome = m_connection->commit();
        m_begun = false;
    }
    return m_outcome;
}

quint32 BulkWriter::newObject(const QString &kind)
{
    if (!m_outcome.ok())
        return 0;
    Query insert = m_connection->query("object_insert");
    insert.bind(":kind", kind);
    return run(insert) && insert.next() ? insert.id(0) : 0;
}

bool BulkWriter::run(Query &query)
{
    if (!query.exec())
        m_outcome = m_connection->failure();
    return m_outcome.ok();
}

} // namespace store
