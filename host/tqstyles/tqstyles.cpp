#include "tqstyles.h"

#include <QGuiApplication>
#include <QIcon>

#include <initializer_list>
#include <utility>

namespace {

bool desktopIsDark = false;
bool darkShown = false;

using Colours = std::initializer_list<std::pair<QPalette::ColorRole, QRgb>>;

// The selection is pale, because the icons are drawn for the colour of the window.
const Colours lightColours = {
    {QPalette::Window, 0xf3f5f8},
    {QPalette::WindowText, 0x1f2933},
    {QPalette::Base, 0xffffff},
    {QPalette::AlternateBase, 0xf5f8fb},
    {QPalette::Text, 0x1f2933},
    {QPalette::Button, 0xeef1f5},
    {QPalette::ButtonText, 0x1f2933},
    {QPalette::BrightText, 0xffffff},
    {QPalette::ToolTipBase, 0xffffff},
    {QPalette::ToolTipText, 0x1f2933},
    {QPalette::PlaceholderText, 0x66727f},
    {QPalette::Light, 0xffffff},
    {QPalette::Midlight, 0xe6eaef},
    {QPalette::Mid, 0xb9c2cc},
    {QPalette::Dark, 0x8e99a6},
    {QPalette::Shadow, 0x5c6670},
    {QPalette::Highlight, 0xbcd8f4},
    {QPalette::HighlightedText, 0x14222f},
    {QPalette::Link, 0x1f66b0},
    {QPalette::LinkVisited, 0x6a4fa3},
};

const Colours darkColours = {
    {QPalette::Window, 0x23282f},
    {QPalette::WindowText, 0xe4e9ef},
    {QPalette::Base, 0x1b1f25},
    {QPalette::AlternateBase, 0x21262d},
    {QPalette::Text, 0xe4e9ef},
    {QPalette::Button, 0x2d343c},
    {QPalette::ButtonText, 0xe4e9ef},
    {QPalette::BrightText, 0xffffff},
    {QPalette::ToolTipBase, 0x323a44},
    {QPalette::ToolTipText, 0xe4e9ef},
    {QPalette::PlaceholderText, 0x98a3b0},
    {QPalette::Light, 0x46505b},
    {QPalette::Midlight, 0x38414b},
    {QPalette::Mid, 0x4a545f},
    {QPalette::Dark, 0x15181c},
    {QPalette::Shadow, 0x0b0d10},
    {QPalette::Highlight, 0x35557a},
    {QPalette::HighlightedText, 0xffffff},
    {QPalette::Link, 0x74b4f7},
    {QPalette::LinkVisited, 0xb9a2ec},
};

} // namespace

void tqstyles::install()
{
    desktopIsDark = isDark(QGuiApplication::palette());
    const QString path = QStringLiteral(":/orvex-icons");
    QStringList paths = QIcon::themeSearchPaths();
    if (!paths.contains(path))
        QIcon::setThemeSearchPaths(paths << path);
    applyTheme(Theme::System);
}

void tqstyles::applyTheme(Theme theme)
{
    darkShown = theme == Theme::Dark || (theme == Theme::System && desktopIsDark);
    // The icons first, because the change of the palette repaints the widgets.
    QIcon::setThemeName(darkShown ? QStringLiteral("orvex-dark") : QStringLiteral("orvex"));
    QGuiApplication::setPalette(palette(darkShown));
}

bool tqstyles::isDark()
{
    return darkShown;
}

bool tqstyles::isDark(const QPalette &palette)
{
    return palette.color(QPalette::Window).lightness() < 128;
}

QPalette tqstyles::palette(bool dark)
{
    QPalette palette;
    for (const auto &[role, rgb] : dark ? darkColours : lightColours)
        palette.setColor(role, QColor(rgb));

    const QColor faint(dark ? 0x7c8793 : 0x7d8894);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::PlaceholderText})
        palette.setColor(QPalette::Disabled, role, faint);
    palette.setColor(QPalette::Disabled, QPalette::Base, palette.color(QPalette::Window));
    palette.setColor(QPalette::Disabled, QPalette::Highlight, palette.color(QPalette::Mid));
    palette.setColor(QPalette::Disabled, QPalette::HighlightedText, palette.color(QPalette::Window));
    return palette;
}

QColor tqstyles::orange()
{
    return QColor(0xf2a33a);
}

QColor tqstyles::red()
{
    return QColor(darkShown ? 0xff8a8a : 0xc8373e);
}
