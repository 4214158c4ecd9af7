#pragma once

#include "objects.h"
#include "tqglobals_export.h"

/// What every part of the client says of an object in the same words.
class TQGLOBALS_EXPORT TQGlobals
{
public:
    /// The name that a person reads; empty for a null object.
    [[nodiscard]] static QString objectName(const orvex::ObjectInfo &object);
    /// Whether the object is still kept but no longer in use, such as an employee who has left.
    [[nodiscard]] static bool isDeleted(const orvex::ObjectInfo &object);
    /// \a text as people look for it: upper and lower case are the same, and so are "е" and "ё".
    [[nodiscard]] static QString searchText(const QString &text);
};
