#pragma once

#include <QString>

namespace store {

/// The result of upgrading a store's schema.
struct Upgrade
{
    int from = 0; ///< the schema that was found
    int to = 0; ///< the schema that the store has now
    QString copy; ///< the file with the store as it was; empty if nothing was changed
};

} // namespace store
