#pragma once

#include <QString>

namespace store {

/// What raising a store's schema did.
struct Upgrade
{
    int from = 0; ///< the schema that was found
    int to = 0; ///< the schema that the store has now
    QString copy; ///< the file that keeps the store as it was; empty when nothing was to be done
};

} // namespace store
