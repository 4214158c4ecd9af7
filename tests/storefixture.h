#pragma once

#include "bulkwriter.h"
#include "database.h"
#include "requests.h"
#include "tqdatastream.h"

#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <QtTest>

/// A new store on the engine under test, with two employees in a department and two shifts in the guide.
class StoreFixture
{
public:
    quint32 department = 0;
    quint32 employee = 0;
    quint32 otherEmployee = 0;
    quint32 dayShift = 0;
    quint32 nightShift = 0;
    QDateTime time = QDateTime::currentDateTimeUtc(); ///< the present time for the store

    explicit StoreFixture(const QString &engine = QStringLiteral("sqlite"))
    {
        if (engine != QLatin1String("sqlite"))
            qFatal("The engine %s is unknown", qPrintable(engine));
        const auto created = store::Database::create(address());
        if (!created.ok())
            qFatal("%s", qPrintable(created.message()));
        const auto opened = database.open(address());
        if (!opened.ok())
            qFatal("%s", qPrintable(opened.message()));

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
        const auto stored = writer.commit();
        if (!stored.ok())
            qFatal("%s", qPrintable(stored.message()));
    }

    [[nodiscard]] QString path() const { return m_folder.filePath(QStringLiteral("store.orvex")); }
    [[nodiscard]] store::StoreAddress address() const { return store::StoreAddress::file(path()); }

    /// Changes the store through another connection.
    void sql(const QString &statement) const
    {
        {
            auto other = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("other connection"));
            other.setDatabaseName(path());
            other.open();
            QSqlQuery query(other);
            if (!query.exec(statement))
                qFatal("%s: %s", qPrintable(statement), qPrintable(query.lastError().text()));
        }
        QSqlDatabase::removeDatabase(QStringLiteral("other connection"));
    }

    template <class... T> static Command request(const QString &name, const T &...values)
    {
        Command command({StoreRequestKind, name});
        command.setId(QUuid::createUuid());
        command.setPayload(writePayload(values...));
        return command;
    }

    static orvex::SCHEDULE_DATA schedule(const QString &name, orvex::ScheduleMode type = orvex::ScheduleFixed)
    {
        orvex::SCHEDULE_DATA record;
        record.name = name;
        record.type = type;
        return record;
    }

    /// Adds a schedule and returns the stored record.
    orvex::SCHEDULE_DATA add(const orvex::SCHEDULE_DATA &record)
    {
        const Command reply = database.execute(request(request::AddSchedule, record));
        qint32 id = 0;
        if (!reply.isSuccess() || !readPayload(reply.payload(), id))
            qFatal("The schedule cannot be added: %d", reply.result());
        return stored(quint32(id));
    }

    [[nodiscard]] orvex::SCHEDULE_DATA stored(quint32 id)
    {
        orvex::StorageChange all;
        return database.snapshot(all).ok() ? all.schedules.value(id) : orvex::SCHEDULE_DATA();
    }

    store::Database database{[this] { return time; }};

private:
    QTemporaryDir m_folder;
};
