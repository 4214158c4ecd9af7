#include "svc.h"

#include <QLoggingCategory>

QLoggingCategory &svc()
{
    static QLoggingCategory category("gui.plugin.scheduleview");
    return category;
}
