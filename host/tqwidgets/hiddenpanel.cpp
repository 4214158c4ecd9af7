#include "hiddenpanel.h"

#include <QLabel>
#include <QVBoxLayout>

HiddenPanel::HiddenPanel(QWidget *parent)
    : QWidget(parent)
    , m_title(new QLabel(this))
    , m_layout(new QVBoxLayout(this))
{
    m_layout->setContentsMargins(0, 0, 0, 0);
    m_layout->setSpacing(0);
    m_layout->addWidget(m_title);
    m_title->setObjectName(QStringLiteral("panelTitle"));
    m_title->setMargin(6);
    m_title->setTextFormat(Qt::PlainText);
    m_title->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    QFont bold = m_title->font();
    bold.setBold(true);
    m_title->setFont(bold);
}

QString HiddenPanel::title() const
{
    return m_title->text();
}

void HiddenPanel::setTitle(const QString &title)
{
    if (title == m_title->text())
        return;
    m_title->setText(title);
    setAccessibleName(title);
    emit titleChanged(title);
}

void HiddenPanel::addWidget(QWidget *widget)
{
    m_layout->addWidget(widget, 1);
}

bool HiddenPanel::isTitleBarVisible() const
{
    return !m_title->isHidden();
}

void HiddenPanel::setTitleBarVisible(bool visible)
{
    m_title->setVisible(visible);
}
