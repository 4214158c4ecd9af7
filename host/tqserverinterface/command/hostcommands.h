#pragma once

#include "latin1.h"

/// Commands between parts of the client.
namespace hostcommand {

/// Followed by the name of a page: the client shows that page, and the page shows the object that the payload names.
constexpr QLatin1String ShowPrefix = orvex::latin1("show:");
/// The text of a reply to a command for which the operator has no right.
constexpr QLatin1String NoRights = orvex::latin1("norights");

} // namespace hostcommand
