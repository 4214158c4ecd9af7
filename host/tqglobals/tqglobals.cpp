#include "tqglobals.h"

#include "datanames.h"

QString TQGlobals::objectName(const orvex::ObjectInfo &object)
{
    return object.parameter(db::param::NAME);
}
