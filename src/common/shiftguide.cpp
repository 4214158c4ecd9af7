#include "shiftguide.h"

#include "localstorage.h"

namespace shiftguide {

// Painting looks up the guide several times per cell: the names are converted once.
static const QString &shiftsName()
{
    static const QString name(orvex::SCHEDULE_SHIFT_DATANAME);
    return name;
}

static const QString &intervalsName()
{
    static const QString name(orvex::SHIFT_INTERVAL_DATANAME);
    return name;
}

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
