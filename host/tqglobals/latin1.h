#pragma once

#include <QLatin1String>

#include <cstddef>

namespace orvex {

/// A literal as a constant: `QLatin1String`'s own constructor from a literal is a constant expression for some
/// compilers only.
template <std::size_t Size> constexpr QLatin1String latin1(const char (&text)[Size])
{
    return QLatin1String(text, int(Size) - 1);
}

} // namespace orvex
