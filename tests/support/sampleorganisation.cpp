#include "sampleorganisation.h"

#include "clientcache.h"
#include "datanames.h"
#include "localstorage.h"
#include "sampleguide.h"
#include "sampleobjects.h"
#include "samplerecords.h"

namespace organisation {

namespace {

orvex::ObjectInfo withMainSchedule(orvex::ObjectInfo employee, int schedule)
{
    employee.parameters.insert(db::param::SCHEDULE, QString::number(schedule));
    return employee;
}

} // namespace

void storeEmployees(const QList<orvex::ObjectInfo> &employees, const QList<quint32> &removed)
{
    orvex::StorageChange change;
    for (const auto &name : {orvex::SUBJECT_DATANAME, orvex::ORGSTRUCTURE_DATANAME}) {
        for (const auto &employee : employees)
            change.objects[name].insert(employee.id, employee);
        if (!removed.isEmpty())
            change.removedObjects[name] = removed;
    }
    orvex::LocalStorage::instance()->apply(change);
}

void fill()
{
    using namespace support;
    guide::fill();
    storeObjects(orvex::ORGSTRUCTURE_DATANAME,
                 {root(Root, "Организация"), firm(Firm, "ООО «Ромашка»", Root), department(Office, "Бухгалтерия", Firm),
                  department(Plant, "Цех 2", Firm)});
    const auto markup = employee(Markup, "<b>Сидоров</b> & Ко", "<i>7</i>", Plant);
    organisation::storeEmployees({withMainSchedule(employee(Ivanova, "Иванова Мария", "0017", Office), MainSchedule),
                                  employee(Petrov, "Петров Пётр", "0042", Plant), withMainSchedule(markup, 99),
                                  deleted(employee(Gone, "Яшин Олег", {}, Plant))});
    storeSchedules({schedule(MainSchedule, "Сменный 2/2", orvex::ScheduleShift)});
}

} // namespace organisation
