#pragma once

#include "bulkwriter.h"
#include "database.h"

#include <QTemporaryDir>

namespace bench {

/// Ends the program where a step has failed: nothing is measured then.
inline void require(const store::Outcome &outcome)
{
    if (!outcome.ok())
        qFatal("%s", qPrintable(outcome.message()));
}

/// A store in \a folder with what \a fill writes.
template <class Fill> store::StoreAddress newStore(const QTemporaryDir &folder, Fill fill)
{
    const auto address = store::StoreAddress::file(folder.filePath(QStringLiteral("store.db")));
    require(store::Database::create(address));
    store::Database database;
    require(database.open(address));
    store::BulkWriter writer(database);
    fill(writer);
    require(writer.commit());
    return address;
}

} // namespace bench
