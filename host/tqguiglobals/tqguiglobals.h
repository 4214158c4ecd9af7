#pragma once

#include "tqguiglobals_export.h"

#include <QColor>

/// Colours that all pages share. Taken from the application's palette at each call, so right on light and dark.
class TQGUIGLOBALS_EXPORT TQGuiGlobals
{
public:
    /// The colour of labels and captions: quieter than text, still readable on its background.
    [[nodiscard]] static QColor titleColor();
    /// The colour of the thin lines of tables and frames.
    [[nodiscard]] static QColor lineColor();
};
