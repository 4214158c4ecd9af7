#include "employeeschedules.h"

#include "localstorage.h"
#include "tqglobals.h"

#include <QCoreApplication>
#include <QLocale>

#include <algorithm>

namespace {

struct Texts
{
    Q_DECLARE_TR_FUNCTIONS(PersonalSchedules)
};

} // namespace

namespace scheduleview {

bool hasPersonalSchedule(quint32 workerId, const QDate &start)
{
    const auto schedules = orvex::LocalStorage::instance()->schedules();
    return std::any_of(schedules.cbegin(), schedules.cend(), [workerId, &start](const orvex::SCHEDULE_DATA &schedule) {
        return schedule.type == orvex::SchedulePersonal && schedule.workerId == workerId && schedule.startDate == start;
    });
}

quint32 mainScheduleId(const orvex::ObjectInfo &worker)
{
    return worker.parameter(db::param::SCHEDULE).toUInt();
}

QString mainScheduleName(const orvex::ObjectInfo &worker)
{
    const auto schedules = orvex::LocalStorage::instance()->schedules();
    const auto schedule = schedules.constFind(mainScheduleId(worker));
    return schedule == schedules.constEnd() ? Texts::tr("<Не назначен>") : schedule->name;
}

orvex::SCHEDULE_DATA personalSchedule(const orvex::ObjectInfo &worker, const QDate &start, const QString &color)
{
    orvex::SCHEDULE_DATA schedule;
    // The month stands by itself here: "август", not "августа".
    const QString month = QLocale().standaloneMonthName(start.month(), QLocale::LongFormat);
    schedule.name = QStringLiteral("%1 %2 %3").arg(TQGlobals::objectName(worker), month, QString::number(start.year()));
    schedule.type = orvex::SchedulePersonal;
    schedule.startDate = start;
    schedule.workerId = worker.id;
    schedule.color = color;
    return schedule;
}

} // namespace scheduleview
