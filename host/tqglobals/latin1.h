#pragma once

#include <QLatin1String>

#include <cstddef>

namespace orvex {

/// A string literal as a constant. The constructor of `QLatin1String` is a constant expression only with some
/// compilers.
template <std::size_t Size> constexpr QLatin1String latin1(const char (&text)[Size])
{
    return QLatin1String(text, int(Size) - 1);
}

} // namespace orvex
