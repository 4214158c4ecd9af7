#pragma once

#include "tqwidgets_export.h"

#include <QSize>

class QWidget;

/// The largest size, in pixels without the frame, that \a window can have on its screen with its frame in view.
[[nodiscard]] TQWIDGETS_EXPORT QSize screenRoom(const QWidget &window);
