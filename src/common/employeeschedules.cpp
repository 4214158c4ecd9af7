#include "employeeschedules.h"

#include "localstorage.h"

#include <QCoreApplication>

#include <algorithm>

namespace {

struct Texts
{
    Q_DECLARE_TR_FUNCTIONS(EmployeeSchedules)
};

} // namespace

namespace scheduleview {

bool hasPersonalSchedule(quint32 employeeId, const QDate &start)
{
    const auto schedules = orvex::LocalStorage::instance()->schedules();
    return std::any_of(schedules.cbegin(), schedules.cend(), [employeeId, &start](const auto &schedule) {
        return schedule.type == orvex::SchedulePersonal && schedule.workerId == employeeId
            && schedule.startDate == start;
    });
}

quint32 mainScheduleId(const orvex::ObjectInfo &employee)
{
    return employee.parameter(db::param::SCHEDULE).toUInt();
}

QString mainScheduleName(const orvex::ObjectInfo &employee)
{
    const auto schedules = orvex::LocalStorage::instance()->schedules();
    const auto schedule = schedules.constFind(mainScheduleId(employee));
    return schedule == schedules.constEnd() ? Texts::tr("<Не назначен>") : schedule->name;
}

} // namespace scheduleview
