#pragma once

#include "bulkwriter.h"
#include "database.h"

#include <QTemporaryDir>

namespace bench {

/// Ends the program when a step of the preparation has failed.
inline void require(const store::Outcome &outcome)
{
    if (!outcome.ok())
        qFatal("%s", qPrintable(outcome.message()));
}

/// Creates a store in \a folder with the content that \a fill writes.
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
