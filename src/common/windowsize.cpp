#include "windowsize.h"

#include "availablewindowsize.h"

#include <QWidget>

namespace scheduleview {

QSize windowSize(const QWidget &window, const QSize &characters)
{
    const auto metrics = window.fontMetrics();
    const QSize wanted(characters.width() * metrics.averageCharWidth(), characters.height() * metrics.lineSpacing());
    const QWidget *onScreen = window.parentWidget() ? window.parentWidget() : &window;
    return wanted.expandedTo(window.minimumSizeHint()).boundedTo(availableWindowSize(*onScreen));
}

} // namespace scheduleview
