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
    if (event->type() != QEvent::KeyPress)
        return false;
    const auto *pressed = static_cast<const QKeyEvent *>(event);
    const bool isReturn = pressed->key() == Qt::Key_Return || pressed->key() == Qt::Key_Enter;
    return isReturn && pressed->isAutoRepeat()
        && (qobject_cast<const QDialog *>(watched) || qobject_cast<const QAbstractButton *>(watched));
}
