#include "storefixture.h"

#include "bulkwriter.h"
#include "storefile.h"

using support::require;

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
    const quint32 root = writer.addUnit({0, store::UnitType::Root, "Организация"});
    department = writer.addUnit({root, store::UnitType::Department, "Цех"});
    employee = writer.addEmployee({"Иванов Иван", "17", "Токарь", department, 0, false});
    otherEmployee = writer.addEmployee({"Петрова Анна", "18", QString(), department, 0, false});
    dayShift = writer.addGuideShift({"День", "Д", "#ffcc00", {{28800, 43200}, {46800, 61200}}});
    nightShift = writer.addGuideShift({"Ночь", "Н", QString(), {{72000, 28800}}});
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
