#pragma once

#include "storeaddress.h"
#include "tqstyles.h"

#include <QCoreApplication>
#include <QString>

#include <optional>

/// The options of the command line.
struct Options
{
    store::StoreAddress store; ///< empty: not given
    QString plugins; ///< folder of the plug-ins
    std::optional<tqstyles::Theme> theme; ///< unset: the remembered one
    QString showName; ///< page to open at start; empty: none
    std::optional<qint32> showId; ///< identifier of the object to show on that page; unset: only the page
    QString pictures; ///< folder for pictures of every tab; empty: normal start

    /// Parses the application's arguments. Help, version and a wrong argument end the program here.
    [[nodiscard]] static Options fromCommandLine();
    /// The store in the user's data folder.
    [[nodiscard]] static store::StoreAddress defaultStore();

    Q_DECLARE_TR_FUNCTIONS(Options)
};
