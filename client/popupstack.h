#pragma once

#include <QFrame>
#include <QList>
#include <QObject>
#include <QPointer>

class IconLabel;
class QLabel;
class QScrollArea;
class QToolButton;

/// One pop-up: an error icon, a text that wraps, a close button. It never takes the focus by appearing.
class Popup final : public QFrame
{
    Q_OBJECT

public:
    Popup(const QString &text, QWidget *parent);

    [[nodiscard]] QString text() const;
    /// Adds \a advice as a paragraph of its own.
    void addParagraph(const QString &advice);
    /// Takes the size that the text needs in \a width, but not more than \a maximumHeight: a longer text scrolls.
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

/// The pop-ups at the lower right of a widget, newest below. Those that do not fit wait until others are closed.
class PopupStack final : public QObject
{
    Q_OBJECT

public:
    /// \a host carries the pop-ups and owns the stack.
    explicit PopupStack(QWidget *host);

    /// Shows a pop-up that goes after \a timeout milliseconds; with 0 it stays until it is closed. The stack owns it.
    Popup *add(const QString &text, int timeout);
    [[nodiscard]] int count() const;

    /// A reply is about to be handed to its sender: pop-ups from now on are about that reply.
    void beginReply();
    /// Adds \a reason to the pop-up that was raised since `beginReply`; does nothing when none was.
    void addReason(const QString &reason);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void remove(Popup *popup);
    void clear();
    void layOut();

    QWidget *m_host = nullptr;
    QList<Popup *> m_popups; ///< oldest first; children of the host
    QPointer<Popup> m_ofReply;
    QToolButton *m_closeAll = nullptr;
};
