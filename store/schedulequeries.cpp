#include "schedulequeries.h"

#include "connection.h"
#include "records.h"

#include <QSet>

namespace store::schedulequeries {

namespace {

QByteArray isoDate(const QDate &date)
{
    int year = 0;
    int month = 0;
    int day = 0;
    date.getDate(&year, &month, &day);
    const auto digit = [](int number) { return char('0' + number % 10); };
    const char text[] = {
        digit(year / 1000), digit(year / 100), digit(year / 10), digit(year), '-', digit(month / 10), digit(month), '-',
        digit(day / 10),    digit(day)};
    return QByteArray(text, sizeof text);
}

} // namespace

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
    // `QJsonDocument` takes longer for a year than the engine takes to store it.
    QByteArray rows("[");
    rows.reserve(days.size() * 64);
    for (const auto &day : days) {
        rows += rows.size() > 1 ? ",{\"date\":\"" : "{\"date\":\"";
        rows += isoDate(day.date);
        rows += "\",\"shift\":";
        rows += day.shiftId == 0 ? QByteArrayLiteral("null") : QByteArray::number(day.shiftId);
        rows += ",\"mode\":";
        rows += QByteArray::number(day.dayMode);
        // Only digits, commas and brackets: nothing to escape.
        rows += ",\"intervals\":\"";
        rows += records::intervalsText(day.intervals).toLatin1();
        rows += "\"}";
    }
    rows += ']';
    return connection.query("calendar_days_store")
        .bind(":schedule_id", schedule)
        .bind(":days", QString::fromLatin1(rows))
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

} // namespace store::schedulequeries
