#pragma once

#include <QLatin1String>

/// Names of the store's requests. Behind each: payload of the request → payload of a successful reply, in stream order.
namespace request {

/// SCHEDULE_DATA → qint32 identifier
constexpr QLatin1String AddSchedule("schedule.add");
/// SCHEDULE_DATA (with the version that was read) → nothing
constexpr QLatin1String UpdateSchedule("schedule.update");
/// QList<quint32> identifiers → nothing. All are removed or none.
constexpr QLatin1String RemoveSchedules("schedule.remove");
/// QList<qint32> schedule identifiers, QDate first, QDate last
/// → QList<qint32>, QDate, QDate (as asked), QHash<qint32, QList<SCHEDULE_CALENDAR_DAY>>
constexpr QLatin1String GetScheduleCalendar("schedule.calendar.get");
/// qint32 schedule identifier, QDate first, QDate last, QList<SCHEDULE_CALENDAR_DAY> → nothing
constexpr QLatin1String UpdateScheduleCalendar("schedule.calendar.update");
/// QList<_BLOB_DATA_RESQUEST> → QHash<quint32, QHash<QString, QByteArray>>, only blobs whose MD5 differs from the asked
constexpr QLatin1String GetBlobDataChange("blob.get_changed");

} // namespace request
