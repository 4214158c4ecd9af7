#include "iconlabel.h"

#include <QEvent>
#include <QIcon>

IconLabel::IconLabel(QWidget *parent)
    : QLabel(parent)
{
}

void IconLabel::setIcon(const QString &name, int extent)
{
    m_name = name;
    m_extent = extent;
    draw();
}

void IconLabel::changeEvent(QEvent *event)
{
    QLabel::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        draw();
}

void IconLabel::draw()
{
    setPixmap(QIcon::fromTheme(m_name).pixmap(m_extent, m_extent));
}
