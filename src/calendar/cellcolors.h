#pragma once

#include <QColor>

/// Colours of day cells, readable with any colour that an operator gives to a schedule.
namespace cellcolors {

/// Whether white is more readable on the colour than black.
[[nodiscard]] bool isDark(const QColor &color);
/// Black or white, whichever is more readable on \a background blended over \a base.
[[nodiscard]] QColor readableOn(const QColor &background, const QColor &base);
/// The colour of a cell without a date: \a light, or a dark one on a dark \a base.
[[nodiscard]] QColor undated(const QColor &light, const QColor &base);

} // namespace cellcolors
