#pragma once

#include "driver.h"

#include <memory>

/// The database engines that are linked into the program. The target `store` contains all of them.
namespace store::engines {

/// Makes a driver that is not connected; null if \a address belongs to another engine.
using Factory = std::unique_ptr<Driver> (*)(const StoreAddress &address);

/// Adds an engine. Every engine does so before `main`.
void add(Factory factory);

/// The driver for \a address. Ends the program if no engine for it is linked.
[[nodiscard]] std::unique_ptr<Driver> newDriver(const StoreAddress &address);

} // namespace store::engines
