#pragma once

#include <QSize>

class QWidget;

namespace scheduleview {

/// The size of a window that has room for \a letters, average ones across and lines down, in its own font; no larger
/// than the screen that its parent is on allows.
[[nodiscard]] QSize windowSize(const QWidget &window, const QSize &letters);

} // namespace scheduleview
