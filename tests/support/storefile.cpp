#include "storefile.h"

#include "storerequest.h"

#include <QBuffer>
#include <QFile>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>

namespace support {

QString tryStatement(const QString &file, const QString &statement)
{
    const QString connection = "test statement";
    QString error;
    {
        auto database = QSqlDatabase::addDatabase("QSQLITE", connection);
        database.setDatabaseName(file);
        database.open();
        QSqlQuery query(database);
        if (!query.exec(statement))
            error = QStringLiteral("%1: %2").arg(statement, query.lastError().text());
    }
    QSqlDatabase::removeDatabase(connection);
    return error;
}

void executeStatement(const QString &file, const QString &statement)
{
    const QString error = tryStatement(file, statement);
    if (!error.isEmpty())
        qFatal("%s", qPrintable(error));
}

QByteArray contents(const QString &file)
{
    QFile opened(file);
    return opened.open(QIODevice::ReadOnly) ? opened.readAll() : QByteArray();
}

void require(const store::Outcome &outcome)
{
    if (!outcome.ok())
        qFatal("%s", qPrintable(outcome.message()));
}

orvex::StorageChange snapshotOf(const QString &file)
{
    store::Database database;
    orvex::StorageChange all;
    require(database.open(store::StoreAddress::file(file)));
    require(database.snapshot(all));
    return all;
}

QStringList faultsOf(const QString &file)
{
    store::Database database;
    QList<store::Fault> faults;
    const auto opened = database.open(store::StoreAddress::file(file), store::Access::Read);
    const auto checked = database.check(faults);
    if (!opened.ok() || !checked.ok())
        return {opened.text + checked.text};
    QStringList texts;
    for (const auto &fault : qAsConst(faults)) {
        if (fault.remedy.isEmpty())
            qFatal("The fault has no remedy: %s", qPrintable(fault.text));
        texts.append(fault.text);
    }
    return texts;
}

QByteArray dumpOf(const QString &file)
{
    store::Database database;
    QBuffer document;
    document.open(QIODevice::WriteOnly);
    require(database.open(store::StoreAddress::file(file), store::Access::Read));
    require(database.dump(document));
    return document.data();
}

QList<orvex::SCHEDULE_CALENDAR_DAY> storedDays(store::Database &database, qint32 schedule, const QDate &first,
                                               const QDate &last)
{
    const Command reply =
        database.execute(storeRequest(request::GetScheduleCalendar, QList<qint32>{schedule}, first, last));
    QList<qint32> ids;
    QDate from;
    QDate to;
    QHash<qint32, QList<orvex::SCHEDULE_CALENDAR_DAY>> days;
    if (!readPayload(reply.payload(), ids, from, to, days) || ids != QList<qint32>{schedule} || from != first)
        qFatal("The calendar's reply cannot be read");
    return days.value(schedule);
}

} // namespace support
