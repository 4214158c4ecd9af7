#pragma once

#include "tqwidgets_export.h"

class QSpinBox;
class QWidget;

/// Makes \a field leave the mouse wheel to the page around it unless it has the focus, so that scrolling a form changes
/// no value by accident.
TQWIDGETS_EXPORT void guardWheel(QWidget *field);

/// Lets Return end what is typed in \a field, and no more: the window around would take it for its default button.
TQWIDGETS_EXPORT void keepReturn(QSpinBox *field);
