#pragma once

#include "tqwidgets_export.h"

#include <QSize>

class QWidget;

/// The largest size, in pixels without the frame, at which \a window with its frame fits on its screen.
[[nodiscard]] TQWIDGETS_EXPORT QSize availableWindowSize(const QWidget &window);
