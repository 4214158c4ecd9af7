#include "shiftguide.h"

#include "localstorage.h"

namespace shiftguide {

namespace {

// Painting looks up the guide several times per cell, so the names are converted only once.
const QString &shiftsName()
{
    static const QString name(orvex::SCHEDULE_SHIFT_DATANAME);
    return name;
}

const QString &intervalsName()
{
    static const QString name(orvex::SHIFT_INTERVAL_DATANAME);
    return name;
}

} // namespace

const orvex::ObjectHash *shifts()
{
    return orvex::LocalStorage::instance()->constObjects(shiftsName());
}

const orvex::ObjectHash *intervals()
{
    return orvex::LocalStorage::instance()->constObjects(intervalsName());
}

bool isGuide(const QString &dataName)
{
    return dataName == shiftsName() || dataName == intervalsName();
}

} // namespace shiftguide
