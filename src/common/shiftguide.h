#pragma once

#include "objects.h"

/// The shift guide as the local storage holds it at this moment.
namespace shiftguide {

[[nodiscard]] const orvex::ObjectHash *shifts();
[[nodiscard]] const orvex::ObjectHash *intervals();
/// Whether objects of this data name belong to the guide.
[[nodiscard]] bool isGuide(const QString &dataName);

} // namespace shiftguide
