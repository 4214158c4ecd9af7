#include "keyrepeatguard.h"

#include <QAbstractButton>
#include <QCoreApplication>
#include <QDialog>
#include <QKeyEvent>

KeyRepeatGuard::KeyRepeatGuard(QObject *parent)
    : QObject(parent)
{
    QCoreApplication::instance()->installEventFilter(this);
}

bool KeyRepeatGuard::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() != QEvent::KeyPress && event->type() != QEvent::KeyRelease)
        return false;
    const auto *key = static_cast<const QKeyEvent *>(event);
    if (key->key() != Qt::Key_Return && key->key() != Qt::Key_Enter)
        return false;
    if (event->type() == QEvent::KeyRelease) {
        m_released = key->timestamp();
        return false;
    }
    // X11 repeats a key as a release and a press with the same timestamp; Qt may report such a press as a new one.
    if (!key->isAutoRepeat())
        return key->timestamp() != 0 && key->timestamp() == m_released;
    return qobject_cast<const QDialog *>(watched) || qobject_cast<const QAbstractButton *>(watched);
}
