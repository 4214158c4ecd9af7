#pragma once

#include "changefeed.h"
#include "connection.h"
#include "database.h"
#include "requestexecutor.h"

namespace store {

/// The parts of an open store.
struct Database::Parts
{
    Parts(std::unique_ptr<Driver> driver, Clock clock, StopFlag stop, CreatedSchedules &createdHere)
        : connection(std::move(driver), std::move(clock), std::move(stop))
        , executor(connection, createdHere)
        , feed(connection)
    {
    }

    Connection connection;
    RequestExecutor executor;
    ChangeFeed feed;
};

} // namespace store
