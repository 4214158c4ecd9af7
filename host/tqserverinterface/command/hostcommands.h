#pragma once

#include "latin1.h"

/// What one part of the client asks of another, and how it is refused.
namespace hostcommand {

/// Followed by the name of a page: the client brings that page to the front, and the page shows what the payload names.
constexpr QLatin1String ShowPrefix = orvex::latin1("show:");
/// The text of an answer to a command that the user has no right for.
constexpr QLatin1String NoRights = orvex::latin1("norights");

} // namespace hostcommand
