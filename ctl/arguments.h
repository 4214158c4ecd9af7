#pragma once

#include "storeaddress.h"

#include <QHash>
#include <QStringList>

/// The parsed arguments of one subcommand.
struct Arguments
{
    QStringList positional;
    QHash<QString, QString> options; ///< values by option name

    /// The store in the first positional argument, which every subcommand has.
    [[nodiscard]] store::StoreAddress store() const { return store::StoreAddress::file(positional.first()); }
};
