#pragma once

#include <QList>
#include <QObject>
#include <QString>
#include <QTimer>

class MainWindow;

/// Writes pictures of every tab of every page in the light and the dark theme. Works without a display.
class PictureTaker final : public QObject
{
    Q_OBJECT

public:
    /// \a window must be visible with its pages; it owns this object.
    PictureTaker(MainWindow &window, const QString &folder);

    /// Starts to write `<page>-<tab number>-<theme>.png` files and to print their paths. An open dialog gets its own
    /// picture and is closed.
    void start();

signals:
    /// All pictures are written, or \a failure is the reason why not.
    void finished(const QString &failure);

private:
    struct Shot
    {
        QString page;
        int tab = 0; ///< tab position
        bool dark = false;
    };

    void planShots();
    void prepareNext();
    void takeNext();
    [[nodiscard]] bool write(QWidget *widget, const QString &name);

    MainWindow &m_window;
    QString m_folder;
    QList<Shot> m_shots; ///< remaining ones
    // A timer and not a nested event loop: an open dialog runs its own loop.
    QTimer m_settled;
};
