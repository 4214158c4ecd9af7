#pragma once

#include "objects.h"

/// The shift guide of the local storage.
namespace shiftguide {

[[nodiscard]] const orvex::ObjectHash *shifts();
[[nodiscard]] const orvex::ObjectHash *intervals();
/// Whether objects of this data name belong to the guide.
[[nodiscard]] bool isGuide(const QString &dataName);

} // namespace shiftguide
