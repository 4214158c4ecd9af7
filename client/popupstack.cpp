#include "popupstack.h"

#include <QAccessible>
#include <QEvent>
#include <QTimer>
#include <QToolButton>

PopupStack::PopupStack(QWidget *host)
    : QObject(host)
    , m_host(host)
    , m_closeAll(new QToolButton(host))
{
    m_closeAll->setObjectName(QStringLiteral("popupCloseAll"));
    m_closeAll->setFocusPolicy(Qt::TabFocus);
    m_closeAll->hide();
    connect(m_closeAll, &QToolButton::clicked, this, &PopupStack::clear);
    host->installEventFilter(this);
}

Popup *PopupStack::add(const QString &text, int timeout)
{
    auto *popup = new Popup(text, m_host);
    connect(popup, &Popup::dismissed, this, [this, popup] { remove(popup); });
    if (timeout > 0)
        QTimer::singleShot(timeout, popup, [this, popup] { remove(popup); });
    m_popups.append(popup);
    m_replyPopup = popup;
    layOut();
    QAccessibleEvent alert(popup, QAccessible::Alert);
    QAccessible::updateAccessibility(&alert);
    return popup;
}

int PopupStack::count() const
{
    return m_popups.size();
}

void PopupStack::beginReply()
{
    m_replyPopup.clear();
}

void PopupStack::addReason(const QString &reason)
{
    if (!m_replyPopup || reason.isEmpty())
        return;
    m_replyPopup->addParagraph(reason);
    m_replyPopup.clear();
    layOut();
}

bool PopupStack::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_host && (event->type() == QEvent::Resize || event->type() == QEvent::FontChange))
        layOut();
    return QObject::eventFilter(watched, event);
}

void PopupStack::remove(Popup *popup)
{
    if (!m_popups.removeOne(popup))
        return;
    popup->hide();
    popup->deleteLater();
    layOut();
}

void PopupStack::clear()
{
    while (!m_popups.isEmpty())
        remove(m_popups.last());
}

void PopupStack::layOut()
{
    constexpr int Margin = 12;
    constexpr int Gap = 8;
    constexpr int SeveralPopups = 3;
    const int width = qMin(m_host->width() - 2 * Margin, qMax(380, m_host->fontMetrics().averageCharWidth() * 48));
    const int right = m_host->width() - Margin;
    const bool several = m_popups.size() >= SeveralPopups;
    m_closeAll->setText(tr("Закрыть все (%1)").arg(m_popups.size()));
    m_closeAll->adjustSize();
    const int top = Margin + (several ? m_closeAll->height() + Gap : 0);

    int bottom = m_host->height() - Margin;
    bool fits = true;
    for (int i = m_popups.size() - 1; i >= 0; --i) {
        Popup *popup = m_popups.at(i);
        popup->fit(width, m_host->height() / 2);
        const bool newest = i == m_popups.size() - 1;
        fits = newest || (fits && bottom - popup->height() >= top);
        popup->setVisible(fits);
        if (!fits)
            continue;
        popup->move(right - popup->width(), bottom - popup->height());
        popup->raise();
        bottom = popup->y() - Gap;
    }
    m_closeAll->setVisible(several);
    m_closeAll->move(right - m_closeAll->width(), bottom - m_closeAll->height());
    m_closeAll->raise();
}
