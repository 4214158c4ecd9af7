#include "noticestrip.h"

#include "closebutton.h"
#include "iconlabel.h"

#include <QHBoxLayout>

NoticeStrip::NoticeStrip(QWidget *parent)
    : QFrame(parent)
    , m_label(new QLabel(this))
{
    auto *icon = new IconLabel(this);
    icon->setIcon(QStringLiteral("dialog-warning"), 1.2);
    auto *close = new CloseButton(tr("Закрыть уведомление"), this);
    close->setObjectName(QStringLiteral("noticeClose"));
    connect(close, &QToolButton::clicked, this, &NoticeStrip::dismiss);

    m_label->setObjectName(QStringLiteral("noticeText"));
    m_label->setTextFormat(Qt::PlainText);
    m_label->setWordWrap(true);
    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(10, 6, 6, 6);
    layout->setSpacing(8);
    layout->addWidget(icon, 0, Qt::AlignTop);
    layout->addWidget(m_label, 1);
    layout->addWidget(close, 0, Qt::AlignTop);
    setAutoFillBackground(true);
    setBackgroundRole(QPalette::AlternateBase);
    hide();
}

void NoticeStrip::addNotice(const QString &text)
{
    m_notices.append(text);
    m_label->setText(m_notices.join(QLatin1Char('\n')));
    show();
}

QString NoticeStrip::text() const
{
    return m_label->text();
}

void NoticeStrip::dismiss()
{
    m_notices.clear();
    hide();
}
