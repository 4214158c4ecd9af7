#include "benchguide.h"

#include "cache.h"
#include "localstorage.h"
#include "storagechange.h"

namespace bench {

void fillGuide()
{
    orvex::StorageChange change;
    auto &shifts = change.objects[orvex::SCHEDULE_SHIFT_DATANAME];
    auto &intervals = change.objects[orvex::SHIFT_INTERVAL_DATANAME];
    for (quint32 id = 1; id <= 10; ++id) {
        const QString ids = QStringLiteral("%1,%2").arg(10 * id).arg(10 * id + 1);
        shifts.insert(id, {QString(db::guide::SHIFT), id, {{db::param::INTERVALS, ids}}});
        for (quint32 part = 0; part < 2; ++part) {
            const quint32 start = 3600 * (6 + id + 5 * part);
            intervals.insert(10 * id + part,
                             {QString(db::guide::INTERVAL),
                              10 * id + part,
                              {{db::param::START, QString::number(start)},
                               {db::param::FINISH, QString::number(start + 3600 * (1 + id % 4))}}});
        }
    }
    bench::fillCache(change);
}

QList<orvex::SCHEDULE_CALENDAR_DAY> workingDays(int firstYear, int lastYear)
{
    QList<orvex::SCHEDULE_CALENDAR_DAY> days;
    for (QDate date(firstYear, 1, 1); date.year() <= lastYear; date = date.addDays(1)) {
        if (date.dayOfWeek() > 5)
            continue;
        orvex::SCHEDULE_CALENDAR_DAY day;
        day.date = date;
        day.dayMode = orvex::DayByShift;
        day.shiftId = quint32(date.weekNumber() % 10 + 1);
        days.append(day);
    }
    return days;
}

} // namespace bench
