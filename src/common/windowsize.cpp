#include "windowsize.h"

#include "availablewindowsize.h"

#include <QWidget>

namespace scheduleview {

QSize windowSize(const QWidget &window, const QSize &letters)
{
    const auto metrics = window.fontMetrics();
    const QSize wanted(letters.width() * metrics.averageCharWidth(), letters.height() * metrics.lineSpacing());
    const QWidget *near = window.parentWidget() ? window.parentWidget() : &window;
    return wanted.expandedTo(window.minimumSizeHint()).boundedTo(availableWindowSize(*near));
}

} // namespace scheduleview
