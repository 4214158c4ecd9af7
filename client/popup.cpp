#include "popup.h"

#include "closebutton.h"
#include "iconlabel.h"
#include "tqstyles.h"

#include <QHBoxLayout>
#include <QPainter>
#include <QScrollArea>

namespace {

constexpr int StripeWidth = 4;

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
