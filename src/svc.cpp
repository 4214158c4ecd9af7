#include "svc.h"

const QLoggingCategory &svc()
{
    static const QLoggingCategory category("gui.plugin.scheduleview");
    return category;
}
