#pragma once

#include <QColor>

/// The colours of day cells, readable whatever colour an operator has given to a schedule.
namespace cellcolors {

/// Whether white is read better on the colour than black.
[[nodiscard]] bool isDark(const QColor &color);
/// Black or white, whichever is read better on \a background laid over \a base.
[[nodiscard]] QColor readableOn(const QColor &background, const QColor &base);
/// The colour of a cell without a date: \a outside, unless that light grey would glare among dark cells.
[[nodiscard]] QColor quiet(const QColor &outside, const QColor &base);

} // namespace cellcolors
