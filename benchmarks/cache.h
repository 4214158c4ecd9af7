#pragma once

#include "localstorage.h"
#include "storagechange.h"

#include <QEventLoop>

namespace bench {

/// Turns the event loop until the client's cache has taken in everything that came.
inline void waitUntilSettled()
{
    auto *storage = orvex::LocalStorage::instance();
    if (storage->isSettled())
        return;
    QEventLoop loop;
    QObject::connect(storage, &orvex::LocalStorage::settled, &loop, &QEventLoop::quit);
    loop.exec();
}

/// Gives the cache everything that it is to hold.
inline void fillCache(const orvex::StorageChange &everything)
{
    orvex::LocalStorage::instance()->apply(everything);
    waitUntilSettled();
}

} // namespace bench
