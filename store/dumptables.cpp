#include "dumptables.h"

#include <QStringList>

#include <algorithm>

namespace store::dump {

namespace {

Column integer(const char *name)
{
    return {QLatin1String(name), Kind::Integer, false};
}

Column reference(const char *name)
{
    return {QLatin1String(name), Kind::Integer, true};
}

Column text(const char *name)
{
    return {QLatin1String(name), Kind::Text, false};
}

Column optionalText(const char *name)
{
    return {QLatin1String(name), Kind::Text, true};
}

Column bytes(const char *name)
{
    return {QLatin1String(name), Kind::Bytes, false};
}

Table table(const char *name, const char *key, const QList<Column> &columns)
{
    return {QLatin1String(name), QLatin1String(key), columns};
}

QStringList names(const QList<Column> &columns, const QString &prefix)
{
    QStringList list;
    for (const Column &column : columns)
        list.append(prefix + column.name);
    return list;
}

} // namespace

const QList<Table> &tables()
{
    static const QList<Table> all{
        table("granted_role", "role", {text("role")}),
        table("object", "id", {integer("id"), text("kind")}),
        table("org_unit", "id", {integer("id"), reference("parent_id"), text("type"), text("name"), text("state")}),
        table("schedule_shift", "id",
              {integer("id"), text("name"), text("code"), text("color"), text("state"), integer("version")}),
        table("shift_interval", "id",
              {integer("id"), integer("shift_id"), integer("position"), integer("start"), integer("finish")}),
        table("schedule", "id",
              {integer("id"), text("name"), integer("state"), integer("type"), text("color"),
               optionalText("start_date"), integer("use_holidays"), integer("free_start"), integer("free_finish"),
               integer("free_norm"), integer("free_break"), text("comment"), reference("worker_id"), text("mode"),
               integer("version"), text("changed_by"), text("changed_at")}),
        table("subject", "id",
              {integer("id"), text("name"), text("personnel_number"), text("position"), reference("unit_id"),
               reference("schedule_id"), text("state")}),
        table("schedule_calendar_day", "schedule_id, date",
              {integer("schedule_id"), text("date"), reference("shift_id"), integer("day_mode"), text("intervals"),
               integer("revision")}),
        table("production_day", "date", {text("date"), integer("mode"), text("note")}),
        table("blob", "object_id, name", {integer("object_id"), text("name"), bytes("md5"), bytes("data")}),
        table("request_log", "request_id",
              {text("request_id"), text("login"), integer("result"), bytes("reply"), text("stored_at")}),
    };
    return all;
}

bool hasSequence(const QString &table)
{
    static const QStringList with{QStringLiteral("object"), QStringLiteral("schedule"),
                                  QStringLiteral("schedule_shift"), QStringLiteral("shift_interval")};
    return with.contains(table);
}

QString Table::selectStatement() const
{
    return QStringLiteral("SELECT %1 FROM %2 ORDER BY %3").arg(names(columns, {}).join(QLatin1String(", ")), name, key);
}

QString Table::insertStatement() const
{
    return QStringLiteral("INSERT INTO %1 (%2) VALUES (%3)")
        .arg(name, names(columns, {}).join(QLatin1String(", ")),
             names(columns, QStringLiteral(":")).join(QLatin1String(", ")));
}

} // namespace store::dump
