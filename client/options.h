#pragma once

#include "storeaddress.h"
#include "tqstyles.h"

#include <QCoreApplication>
#include <QString>

#include <optional>

/// What the command line asks for.
struct Options
{
    store::StoreAddress store; ///< empty: not named
    QString plugins; ///< the folder of the plug-ins
    std::optional<tqstyles::Theme> theme; ///< unset: as remembered
    QString showName; ///< the page to open at start; empty: none
    std::optional<qint32> showId; ///< what that page is to show; unset: only the page
    QString pictures; ///< the folder for pictures of every tab; empty: run as usual

    /// Reads the arguments of the application object. Help, version and a wrong argument end the program here.
    static Options fromCommandLine();
    /// The store in the user's data folder.
    static store::StoreAddress usualStore();

    Q_DECLARE_TR_FUNCTIONS(Options)
};
