#include "popupstack.h"

#include "closebutton.h"
#include "iconlabel.h"
#include "tqstyles.h"

#include <QAccessible>
#include <QEvent>
#include <QHBoxLayout>
#include <QPainter>
#include <QScrollArea>
#include <QTimer>
#include <QToolButton>

namespace {

constexpr int Margin = 12;
constexpr int Gap = 8;
constexpr int StripeWidth = 4;
constexpr int SeveralPopups = 3;

} // namespace

Popup::Popup(const QString &text, QWidget *parent)
    : QFrame(parent)
    , m_icon(new IconLabel(this))
    , m_label(new QLabel(text))
    , m_area(new QScrollArea(this))
{
    setObjectName(QStringLiteral("popup"));
    m_icon->setIcon(QStringLiteral("dialog-error"), 1.4);
    auto *close = new CloseButton(tr("Закрыть сообщение"), this);
    close->setObjectName(QStringLiteral("popupClose"));
    connect(close, &QToolButton::clicked, this, &Popup::dismissed);

    m_label->setObjectName(QStringLiteral("popupText"));
    m_label->setTextFormat(Qt::PlainText);
    m_label->setWordWrap(true);
    m_label->setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    m_area->setWidget(m_label);
    m_area->setWidgetResizable(true);
    m_area->setFrameShape(QFrame::NoFrame);
    m_area->setFocusPolicy(Qt::TabFocus);
    m_area->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_area->viewport()->setAutoFillBackground(false);
    m_label->setAutoFillBackground(false);

    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(StripeWidth + 10, 10, 8, 10);
    layout->setSpacing(10);
    layout->addWidget(m_icon, 0, Qt::AlignTop);
    layout->addWidget(m_area, 1);
    layout->addWidget(close, 0, Qt::AlignTop);
    setAccessibleName(text);
}

QString Popup::text() const
{
    return m_label->text();
}

void Popup::addParagraph(const QString &advice)
{
    m_label->setText(m_label->text() + QStringLiteral("\n\n") + advice);
    setAccessibleName(m_label->text());
}

void Popup::fit(int width, int maximumHeight)
{
    ensurePolished();
    resize(width, height());
    layout()->activate();
    const int others = width - m_area->width();
    const int needed = qMax(m_label->heightForWidth(width - others), m_icon->sizeHint().height());
    const QMargins margins = layout()->contentsMargins();
    const bool scrolls = needed + margins.top() + margins.bottom() > maximumHeight;
    m_area->setFocusPolicy(scrolls ? Qt::TabFocus : Qt::NoFocus);
    m_area->setVerticalScrollBarPolicy(scrolls ? Qt::ScrollBarAsNeeded : Qt::ScrollBarAlwaysOff);
    resize(width, qMin(maximumHeight, needed + margins.top() + margins.bottom()));
}

void Popup::paintEvent(QPaintEvent *event)
{
    Q_UNUSED(event)
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(palette().color(QPalette::Mid));
    painter.setBrush(palette().base());
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), 5, 5);
    painter.setPen(Qt::NoPen);
    painter.setBrush(tqstyles::red());
    painter.drawRoundedRect(QRectF(1, 1, StripeWidth, height() - 2), 2, 2);
}

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
