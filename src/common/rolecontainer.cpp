#include "rolecontainer.h"

#include "authdata.h"
#include "rolenames.h"

namespace scheduleview {

bool RoleContainer::canShow()
{
    return AuthData::roles().contains(db::role::SCHEDULE_SHOW);
}

bool RoleContainer::canCreate()
{
    return AuthData::roles().contains(db::role::SCHEDULE_CREATE);
}

bool RoleContainer::canUpdate()
{
    return AuthData::roles().contains(db::role::SCHEDULE_UPDATE);
}

bool RoleContainer::canDelete()
{
    return AuthData::roles().contains(db::role::SCHEDULE_DELETE);
}

} // namespace scheduleview
