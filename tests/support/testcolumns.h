#pragma once

#include <QTest>

#include <iterator>

namespace support {

/// Adds the columns of a test's table: `addColumns<int, QString>({"day", "text"})`.
template <class... T> void addColumns(const char *const (&names)[sizeof...(T)])
{
    auto name = std::begin(names);
    (QTest::addColumn<T>(*name++), ...);
}

} // namespace support
