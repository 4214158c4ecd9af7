#include "rolecontainer.h"

#include "authdata.h"

namespace scheduleview {

bool RoleContainer::canShow()
{
    return AuthData::roles().contains(QLatin1String("RL_SCHEDULE_SHOW"));
}

bool RoleContainer::canCreate()
{
    return AuthData::roles().contains(QLatin1String("RL_SCHEDULE_CREATE"));
}

bool RoleContainer::canUpdate()
{
    return AuthData::roles().contains(QLatin1String("RL_SCHEDULE_UPDATE"));
}

bool RoleContainer::canDelete()
{
    return AuthData::roles().contains(QLatin1String("RL_SCHEDULE_DELETE"));
}

} // namespace scheduleview
