#pragma once

#include "popup.h"

#include <QList>
#include <QObject>
#include <QPointer>

class QToolButton;

/// The pop-ups at the lower right of a widget, the newest at the bottom. Those that do not fit stay hidden until others
/// are closed.
class PopupStack final : public QObject
{
    Q_OBJECT

public:
    /// \a host is the parent of the pop-ups and owns the stack.
    explicit PopupStack(QWidget *host);

    /// Shows a pop-up for \a timeout milliseconds; with 0 it stays until it is closed. The stack owns it.
    Popup *add(const QString &text, int timeout);
    /// Closes \a popup; null is ignored.
    void remove(Popup *popup);
    [[nodiscard]] int count() const;

    /// A reply is about to be delivered: pop-ups added from now on belong to it.
    void beginReply();
    /// Adds \a reason to the last pop-up added since `beginReply`; without one it does nothing.
    void addReason(const QString &reason);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void clear();
    void layOut();

    QWidget *m_host = nullptr;
    QList<Popup *> m_popups; ///< oldest first; children of the host
    QPointer<Popup> m_replyPopup; ///< the last one added since `beginReply`
    QToolButton *m_closeAll = nullptr;
};
