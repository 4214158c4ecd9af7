#pragma once

#include "tqwidgets_export.h"

class QWidget;

/// Makes \a field leave the mouse wheel to the page around it unless it has the focus, so that scrolling a form changes
/// no value by accident.
TQWIDGETS_EXPORT void guardWheel(QWidget *field);
