#include "windowsize.h"

#include <QScreen>
#include <QWidget>

namespace scheduleview {

namespace {

/// Room that a window manager may need around a window.
const QSize WindowFrame(24, 48);

} // namespace

QSize windowSize(const QWidget &window, const QSize &letters)
{
    const auto metrics = window.fontMetrics();
    const QSize wanted(letters.width() * metrics.averageCharWidth(), letters.height() * metrics.lineSpacing());
    const QWidget *near = window.parentWidget() ? window.parentWidget() : &window;
    return wanted.expandedTo(window.minimumSizeHint()).boundedTo(near->screen()->availableSize() - WindowFrame);
}

} // namespace scheduleview
