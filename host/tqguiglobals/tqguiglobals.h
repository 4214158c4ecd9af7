#pragma once

#include "tqguiglobals_export.h"

#include <QColor>

/// Colours that all pages share, from the application's palette at the time of the call.
class TQGUIGLOBALS_EXPORT TQGuiGlobals
{
public:
    /// The colour of labels and captions: less contrast than text, still readable.
    [[nodiscard]] static QColor titleColor();
    /// The colour of the thin lines of tables and frames.
    [[nodiscard]] static QColor lineColor();
};
