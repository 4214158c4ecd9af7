#pragma once

#include <QtGlobal>

/// A small shift guide.
namespace guide {

constexpr quint32 Day = 1; ///< 08:00–12:00, 13:00–17:00: 8 h, break 1 h
constexpr quint32 Night = 2; ///< 20:00–08:00: 12 h, 8 h of them at night
constexpr quint32 Short = 3; ///< 09:00–16:59: 7 h 59 min
constexpr quint32 Unknown = 77; ///< not in the guide

/// Replaces the client's cache by this guide.
void fill();

} // namespace guide
