#include "tqglobals.h"

#include "datanames.h"

QString TQGlobals::objectName(const orvex::ObjectInfo &object)
{
    return object.parameter(db::param::NAME);
}

bool TQGlobals::isDeleted(const orvex::ObjectInfo &object)
{
    return object.parameter(db::param::OBJECTSTATE) == QLatin1String("d");
}

QString TQGlobals::searchText(const QString &text)
{
    return text.toCaseFolded().replace(QChar(0x0451), QChar(0x0435));
}
