#pragma once

#include "objects.h"
#include "tqglobals_export.h"

/// What every part of the client says of an object in the same words.
class TQGLOBALS_EXPORT TQGlobals
{
public:
    /// The name that a person reads; empty for a null object.
    [[nodiscard]] static QString objectName(const orvex::ObjectInfo &object);
};
