#pragma once

#include <QSize>

class QWidget;

namespace scheduleview {

/// The size of a window that has space for \a characters of average width across and lines down, in its own font. At
/// least the window's minimum, at most what its parent's screen allows.
[[nodiscard]] QSize windowSize(const QWidget &window, const QSize &characters);

} // namespace scheduleview
