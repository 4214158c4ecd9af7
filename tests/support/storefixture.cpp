#include "storefixture.h"

#include "bulkwriter.h"
#include "storefile.h"

namespace {

void require(const store::Outcome &outcome)
{
    if (!outcome.ok())
        qFatal("%s", qPrintable(outcome.message()));
}

} // namespace

StoreFixture::StoreFixture(const QString &engine)
{
    if (engine != QLatin1String("sqlite"))
        qFatal("The engine %s is unknown", qPrintable(engine));
    require(store::Database::create(address()));
    require(database.open(address()));
    fill();
}

void StoreFixture::fill()
{
    store::BulkWriter writer(database);
    const quint32 root = writer.addUnit({0, store::UnitType::Root, QStringLiteral("Организация")});
    department = writer.addUnit({root, store::UnitType::Department, QStringLiteral("Цех")});
    employee = writer.addEmployee(
        {QStringLiteral("Иванов Иван"), QStringLiteral("17"), QStringLiteral("Токарь"), department, 0, false});
    otherEmployee =
        writer.addEmployee({QStringLiteral("Петрова Анна"), QStringLiteral("18"), QString(), department, 0, false});
    dayShift = writer.addGuideShift(
        {QStringLiteral("День"), QStringLiteral("Д"), QStringLiteral("#ffcc00"), {{28800, 43200}, {46800, 61200}}});
    nightShift = writer.addGuideShift({QStringLiteral("Ночь"), QStringLiteral("Н"), QString(), {{72000, 28800}}});
    require(writer.commit());
}

void StoreFixture::sql(const QString &statement) const
{
    support::executeStatement(path(), statement);
}

orvex::SCHEDULE_DATA StoreFixture::add(const orvex::SCHEDULE_DATA &record)
{
    const Command reply = database.execute(support::storeRequest(request::AddSchedule, record));
    qint32 id = 0;
    if (!reply.isSuccess() || !readPayload(reply.payload(), id))
        qFatal("The schedule is not added: %d", reply.result());
    return stored(quint32(id));
}

orvex::SCHEDULE_DATA StoreFixture::stored(quint32 id)
{
    orvex::StorageChange all;
    return database.snapshot(all).ok() ? all.schedules.value(id) : orvex::SCHEDULE_DATA();
}
