#pragma once

#include "objects.h"
#include "tqglobals_export.h"

/// Properties of objects that all parts of the client need.
class TQGLOBALS_EXPORT TQGlobals
{
public:
    /// The display name; empty for a null object.
    [[nodiscard]] static QString objectName(const orvex::ObjectInfo &object);
    /// Whether the object is kept but no longer in use, such as an employee who has left.
    [[nodiscard]] static bool isDeleted(const orvex::ObjectInfo &object);
    /// \a text folded for searching: no difference of case or between "е" and "ё".
    [[nodiscard]] static QString searchText(const QString &text);
};
