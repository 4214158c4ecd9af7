#pragma once

#include <QList>
#include <QObject>
#include <QString>
#include <QTimer>

class MainWindow;

/// Writes pictures of every tab of every page, in light and in dark, for machines without a display.
class PictureTaker final : public QObject
{
    Q_OBJECT

public:
    /// \a window is shown, with its pages, and owns the taker.
    PictureTaker(MainWindow &window, const QString &folder);

    /// Begins to write `<page>-<tab number>-<theme>.png` files and to print their paths. A dialog that is open gets a
    /// picture of its own and is closed.
    void start();

signals:
    /// All pictures are written, or \a failure says why not.
    void finished(const QString &failure);

private:
    struct Shot
    {
        QString page;
        int tab = 0; ///< position of the tab
        bool dark = false;
    };

    void planShots();
    void prepareNext();
    void takeNext();
    [[nodiscard]] bool write(QWidget *widget, const QString &name);

    MainWindow &m_window;
    QString m_folder;
    QList<Shot> m_shots; ///< still to be taken
    // Not a nested loop: a dialog that opens meanwhile runs a loop of its own.
    QTimer m_settled;
};
