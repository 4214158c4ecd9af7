#pragma once

#include "calendardays.h"
#include "localstorage.h"
#include "storagechange.h"

/// A small shift guide for tests, put into the local storage in place of what was there.
namespace guide {

constexpr quint32 Day = 1; ///< 08:00–12:00, 13:00–17:00: 8 h, break 1 h
constexpr quint32 Night = 2; ///< 20:00–08:00: 12 h, 8 h of them at night
constexpr quint32 Short = 3; ///< 09:00–16:59: 7 h 59 min
constexpr quint32 Unknown = 77; ///< not in the guide

inline orvex::ObjectInfo shift(quint32 id, const QString &code, const QString &name, const QString &intervals = {})
{
    return {QString(db::guide::SHIFT),
            id,
            {{db::param::CODE, code}, {db::param::NAME, name}, {db::param::INTERVALS, intervals}}};
}

inline orvex::ObjectInfo interval(quint32 id, int start, int finish)
{
    return {QString(db::guide::INTERVAL),
            id,
            {{db::param::START, QString::number(start)}, {db::param::FINISH, QString::number(finish)}}};
}

inline void set(const QList<orvex::ObjectInfo> &shifts, const QList<orvex::ObjectInfo> &intervals)
{
    orvex::StorageChange change;
    change.full = true;
    for (const auto &object : shifts)
        change.objects[orvex::SCHEDULE_SHIFT_DATANAME].insert(object.id, object);
    for (const auto &object : intervals)
        change.objects[orvex::SHIFT_INTERVAL_DATANAME].insert(object.id, object);
    orvex::LocalStorage::instance()->apply(change);
}

inline void fill()
{
    constexpr int Hour = 3600;
    set({shift(Day, QStringLiteral("Д"), QStringLiteral("Дневная"), QStringLiteral("11,12")),
         shift(Night, QStringLiteral("Н"), QStringLiteral("Ночная"), QStringLiteral("13")),
         shift(Short, QString(), QStringLiteral("Неполная"), QStringLiteral("14"))},
        {interval(11, 8 * Hour, 12 * Hour), interval(12, 13 * Hour, 17 * Hour), interval(13, 20 * Hour, 8 * Hour),
         interval(14, 9 * Hour, 17 * Hour - 60)});
}

inline orvex::SCHEDULE_CALENDAR_DAY day(const QDate &date, quint32 shiftId, qint32 mode = orvex::DayByShift)
{
    orvex::SCHEDULE_CALENDAR_DAY result;
    result.date = date;
    result.shiftId = shiftId;
    result.dayMode = mode;
    return result;
}

} // namespace guide
