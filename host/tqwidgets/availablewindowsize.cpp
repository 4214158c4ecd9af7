#include "availablewindowsize.h"

#include <QScreen>
#include <QWidget>

QSize availableWindowSize(const QWidget &window)
{
    constexpr QSize Frame(24, 48);
    return window.screen()->availableSize() - Frame;
}
