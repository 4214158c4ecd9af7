#include "engines.h"

#include <vector>

namespace store::engines {

namespace {

std::vector<Factory> &factories()
{
    static std::vector<Factory> all;
    return all;
}

} // namespace

void add(Factory factory)
{
    factories().push_back(factory);
}

std::unique_ptr<Driver> newDriver(const StoreAddress &address)
{
    for (const Factory factory : factories()) {
        if (auto driver = factory(address))
            return driver;
    }
    qFatal("no database engine for %s is linked", qPrintable(address.toText()));
}

} // namespace store::engines
