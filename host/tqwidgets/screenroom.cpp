#include "screenroom.h"

#include <QScreen>
#include <QWidget>

QSize screenRoom(const QWidget &window)
{
    constexpr QSize Frame(24, 48);
    return window.screen()->availableSize() - Frame;
}
