#pragma once

#include "latin1.h"

/// Names of the store's requests, each with: payload of the request → payload of a successful reply, in stream order.
namespace request {

/// SCHEDULE_DATA → qint32 identifier
constexpr QLatin1String AddSchedule = orvex::latin1("schedule.add");
/// SCHEDULE_DATA (with the version that was read) → nothing
constexpr QLatin1String UpdateSchedule = orvex::latin1("schedule.update");
/// QList<quint32> identifiers → nothing. All are removed or none.
constexpr QLatin1String RemoveSchedules = orvex::latin1("schedule.remove");
/// QList<qint32> schedule identifiers, QDate first, QDate last
/// → QList<qint32>, QDate, QDate (as requested), QHash<qint32, QList<SCHEDULE_CALENDAR_DAY>>
constexpr QLatin1String GetScheduleCalendar = orvex::latin1("schedule.calendar.get");
/// qint32 schedule identifier, QDate first, QDate last, QList<SCHEDULE_CALENDAR_DAY> → nothing
constexpr QLatin1String UpdateScheduleCalendar = orvex::latin1("schedule.calendar.update");
/// QList<_BLOB_DATA_RESQUEST> → QHash<quint32, QHash<QString, QByteArray>>, only blobs whose MD5 differs from the
/// request's
constexpr QLatin1String GetBlobDataChange = orvex::latin1("blob.get_changed");

} // namespace request
