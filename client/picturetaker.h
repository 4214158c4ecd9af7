#pragma once

#include "tqstyles.h"

#include <QString>

class MainWindow;

/// Writes pictures of every tab of every page, in light and in dark, for machines without a display.
class PictureTaker
{
public:
    /// \a window is shown, with its pages; it outlives the taker.
    PictureTaker(MainWindow &window, const QString &folder);

    /// Writes `<page>-<tab number>-<theme>.png` files and prints their paths. Gives what went wrong, or an empty text.
    [[nodiscard]] QString takeAll();

private:
    [[nodiscard]] QString takeTabs(const QString &page, const QString &theme);
    [[nodiscard]] QString take(const QString &name);

    MainWindow &m_window;
    QString m_folder;
};
