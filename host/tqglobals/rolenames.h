#pragma once

#include "latin1.h"

/// Names of the rights in `AuthData::roles()`.
namespace db::role {

constexpr QLatin1String SCHEDULE_SHOW = orvex::latin1("RL_SCHEDULE_SHOW");
constexpr QLatin1String SCHEDULE_CREATE = orvex::latin1("RL_SCHEDULE_CREATE");
constexpr QLatin1String SCHEDULE_UPDATE = orvex::latin1("RL_SCHEDULE_UPDATE");
constexpr QLatin1String SCHEDULE_DELETE = orvex::latin1("RL_SCHEDULE_DELETE");

} // namespace db::role
