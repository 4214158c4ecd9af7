#pragma once

#include "localstorage.h"
#include "storagechange.h"

#include <QEventLoop>

namespace bench {

/// Runs the event loop until the client's cache has applied all pending changes.
inline void waitUntilSettled()
{
    auto *storage = orvex::LocalStorage::instance();
    if (storage->isSettled())
        return;
    QEventLoop loop;
    QObject::connect(storage, &orvex::LocalStorage::settled, &loop, &QEventLoop::quit);
    loop.exec();
}

/// Applies \a everything to the cache and waits until that is done.
inline void fillCache(const orvex::StorageChange &everything)
{
    orvex::LocalStorage::instance()->apply(everything);
    waitUntilSettled();
}

} // namespace bench
