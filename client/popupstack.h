#pragma once

#include <QFrame>
#include <QList>
#include <QObject>
#include <QPointer>

class IconLabel;
class QLabel;
class QScrollArea;
class QToolButton;

/// One pop-up: an error icon, a wrapped text, a close button. It does not take the focus when it appears.
class Popup final : public QFrame
{
    Q_OBJECT

public:
    Popup(const QString &text, QWidget *parent);

    [[nodiscard]] QString text() const;
    /// Adds \a advice as a separate paragraph.
    void addParagraph(const QString &advice);
    /// Takes \a width and the height that the text needs, up to \a maximumHeight; a longer text scrolls.
    void fit(int width, int maximumHeight);

signals:
    void dismissed();

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    IconLabel *m_icon = nullptr;
    QLabel *m_label = nullptr;
    QScrollArea *m_area = nullptr;
};

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
