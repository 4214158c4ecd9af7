#pragma once

#include "tqwidgets_export.h"

class QSpinBox;
class QWidget;

/// Makes \a field ignore the mouse wheel unless it has the focus, so that scrolling a form does not change its value.
TQWIDGETS_EXPORT void ignoreWheelWithoutFocus(QWidget *field);

/// Makes Return commit the typed value of \a field without pressing the default button of the window.
TQWIDGETS_EXPORT void commitOnReturn(QSpinBox *field);
