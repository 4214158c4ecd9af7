#include "cellcolors.h"

#include "tqguiglobals.h"

#include <array>
#include <cmath>

namespace {

// The luminance with the same contrast to black and to white.
constexpr double EqualContrast = 0.179;

/// Relative luminance (WCAG 2.1): 0 black to 1 white.
double luminance(const QColor &color)
{
    static const auto linear = [] {
        std::array<double, 256> table{};
        for (int i = 0; i < 256; ++i) {
            const double channel = i / 255.0;
            table[size_t(i)] = channel <= 0.03928 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
        }
        return table;
    }();
    const auto channel = [](int value) { return linear[size_t(value)]; };
    return 0.2126 * channel(color.red()) + 0.7152 * channel(color.green()) + 0.0722 * channel(color.blue());
}

} // namespace

bool cellcolors::isDark(const QColor &color)
{
    return luminance(color) < EqualContrast;
}

QColor cellcolors::readableOn(const QColor &background, const QColor &base)
{
    const double alpha = background.alphaF();
    const double blended = alpha * luminance(background) + (1 - alpha) * luminance(base);
    return blended < EqualContrast ? Qt::white : Qt::black;
}

QColor cellcolors::undated(const QColor &light, const QColor &base)
{
    if (!isDark(base))
        return light;
    // Halfway to the line colour, so that the lines between such cells stay visible.
    const QColor line = TQGuiGlobals::lineColor();
    return {(line.red() + base.red()) / 2, (line.green() + base.green()) / 2, (line.blue() + base.blue()) / 2};
}
