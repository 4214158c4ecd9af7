#pragma once

#include <QSize>

class QWidget;

namespace scheduleview {

/// The size of a window for \a letters: average characters of its font across, lines down. At least the window's
/// minimum, at most what its parent's screen allows.
[[nodiscard]] QSize windowSize(const QWidget &window, const QSize &letters);

} // namespace scheduleview
