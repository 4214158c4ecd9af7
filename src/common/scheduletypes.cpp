#include "scheduletypes.h"

#include "schedules.h"

#include <QCoreApplication>

namespace scheduleview {

namespace {

struct Texts
{
    Q_DECLARE_TR_FUNCTIONS(ScheduleTypes)
};

} // namespace

QString scheduleTypeName(int type)
{
    switch (type) {
    case orvex::ScheduleFixed:
        return Texts::tr("Фиксированный");
    case orvex::ScheduleShift:
        return Texts::tr("Сменный");
    case orvex::ScheduleFree:
        return Texts::tr("Ненормированный");
    case orvex::ScheduleCalendar:
        return Texts::tr("Календарный");
    case orvex::SchedulePersonal:
        return Texts::tr("Индивидуальный");
    default:
        return Texts::tr("Не указан");
    }
}

} // namespace scheduleview
