#pragma once

#include <QCoreApplication>
#include <QEvent>
#include <QWidget>

namespace bench {

/// Handles pending events and repaints a widget; ends the program if it was not painted.
class Repainter final : public QObject
{
public:
    explicit Repainter(QWidget *watched) { watched->installEventFilter(this); }

    void repaint(QWidget *watched)
    {
        m_painted = false;
        QCoreApplication::sendPostedEvents();
        // Not update(): it waits for the next frame of the screen.
        watched->repaint();
        if (!m_painted)
            qFatal("the list was not painted");
    }

private:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        m_painted |= event->type() == QEvent::Paint;
        return QObject::eventFilter(watched, event);
    }

    bool m_painted = false;
};

} // namespace bench
