#pragma once

#include "tqstyles_export.h"

#include <QColor>
#include <QPalette>

/// The icon theme and the light and dark colours. GUI thread only, needs the application object.
namespace tqstyles {

/// The choice of colours.
enum class Theme
{
    Light,
    Dark,
    System ///< those of the desktop
};

/// Adds the icons for `QIcon::fromTheme` and applies `Theme::System`. Call once at start.
TQSTYLES_EXPORT void install();

/// Sets the application's palette and icons. Existing icons from the theme change when they are painted next.
/// `System` is dark if the desktop's palette was dark at `install()`.
TQSTYLES_EXPORT void applyTheme(Theme theme);

/// Whether the dark colours are in use.
[[nodiscard]] TQSTYLES_EXPORT bool isDark();

/// Whether \a palette has a dark background.
[[nodiscard]] TQSTYLES_EXPORT bool isDark(const QPalette &palette);

/// The palette of the light or the dark theme, with all groups; does not apply it.
[[nodiscard]] TQSTYLES_EXPORT QPalette palette(bool dark);

/// The background of badges with dark text, the same in both themes.
[[nodiscard]] TQSTYLES_EXPORT QColor orange();

/// The colour of errors in the current theme, also that of the icons.
[[nodiscard]] TQSTYLES_EXPORT QColor red();

} // namespace tqstyles
