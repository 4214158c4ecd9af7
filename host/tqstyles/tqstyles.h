#pragma once

#include "tqstyles_export.h"

#include <QColor>
#include <QPalette>

/// The client's look: its icon theme and its light and dark colours. GUI thread only, after the application object.
namespace tqstyles {

/// Which colours to show.
enum class Theme
{
    Light,
    Dark,
    System ///< as the desktop
};

/// Makes our icons known to `QIcon::fromTheme` and applies the system's theme. Call once at start.
TQSTYLES_EXPORT void install();

/// Sets the application's palette and icons. Icons taken from the theme earlier change with their next painting.
/// `System` is dark when the desktop's own palette was dark at `install()`.
TQSTYLES_EXPORT void applyTheme(Theme theme);

/// Whether the dark colours are shown now.
[[nodiscard]] TQSTYLES_EXPORT bool isDark();

/// Whether what is drawn with \a palette stands on dark.
[[nodiscard]] TQSTYLES_EXPORT bool isDark(const QPalette &palette);

/// The colours of the light or the dark theme, all groups filled; changes nothing.
[[nodiscard]] TQSTYLES_EXPORT QPalette palette(bool dark);

/// The orange of badges, the same on light and dark: dark text on it is readable.
[[nodiscard]] TQSTYLES_EXPORT QColor orange();

/// The red of errors, that of the icons on the ground shown now.
[[nodiscard]] TQSTYLES_EXPORT QColor red();

} // namespace tqstyles
