#pragma once

#include "changefeed.h"
#include "connection.h"
#include "database.h"
#include "requestexecutor.h"

namespace store {

/// What an open store consists of.
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
