#include "scheduletables.h"

#include "connection.h"
#include "records.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSet>

namespace store::tables {

quint32 insertSchedule(Connection &connection, const orvex::SCHEDULE_DATA &schedule)
{
    Query insert = connection.query("schedule_insert");
    records::bindSchedule(insert, records::withIdentifiers(schedule), connection);
    return insert.execFirst() ? insert.id(0) : 0;
}

QList<orvex::SCHEDULE_CALENDAR_DAY> calendarDays(Connection &connection, quint32 schedule, const QDate &first,
                                                 const QDate &last)
{
    QList<orvex::SCHEDULE_CALENDAR_DAY> days;
    Query select = connection.query("calendar_days");
    select.bind(":schedule_id", schedule).bindDate(":first", first).bindDate(":last", last);
    if (!select.exec())
        return days;
    while (select.next())
        days.append(records::calendarDay(select));
    return days;
}

bool storeCalendarDays(Connection &connection, quint32 schedule, const QList<orvex::SCHEDULE_CALENDAR_DAY> &days)
{
    QJsonArray rows;
    for (const auto &day : days) {
        rows.append(QJsonObject{{QStringLiteral("date"), day.date.toString(Qt::ISODate)},
                                {QStringLiteral("shift"), day.shiftId == 0 ? QJsonValue() : qint64(day.shiftId)},
                                {QStringLiteral("mode"), day.dayMode},
                                {QStringLiteral("intervals"), records::intervalsText(day.intervals)}});
    }
    const QByteArray json = QJsonDocument(rows).toJson(QJsonDocument::Compact);
    return connection.query("calendar_days_store")
        .bind(":schedule_id", schedule)
        .bind(":days", QString::fromUtf8(json))
        .exec();
}

QList<orvex::SCHEDULE_CALENDAR_DAY> daysToStore(const QList<orvex::SCHEDULE_CALENDAR_DAY> &days)
{
    QList<orvex::SCHEDULE_CALENDAR_DAY> result;
    QSet<QDate> seen;
    for (orvex::SCHEDULE_CALENDAR_DAY day : days) {
        if (seen.contains(day.date))
            continue;
        seen.insert(day.date);
        if (day.overlayMode != -1 && day.dayMode == day.overlayMode)
            day.dayMode = day.storedMode;
        day.overlayMode = -1;
        result.append(day);
    }
    return result;
}

} // namespace store::tables
