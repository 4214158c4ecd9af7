#pragma once

#include "changefeed.h"
#include "connection.h"
#include "database.h"
#include "requestexecutor.h"

namespace store {

/// What an open store consists of.
struct Database::Parts
{
    explicit Parts(std::unique_ptr<Driver> driver)
        : connection(std::move(driver))
        , executor(connection)
        , feed(connection)
    {
    }

    Connection connection;
    RequestExecutor executor;
    ChangeFeed feed;
};

} // namespace store
