#include "iconlabel.h"

#include <QEvent>
#include <QIcon>

IconLabel::IconLabel(QWidget *parent)
    : QLabel(parent)
{
}

void IconLabel::setIcon(const QString &name, qreal lines)
{
    m_name = name;
    m_lines = lines;
    draw();
}

void IconLabel::changeEvent(QEvent *event)
{
    QLabel::changeEvent(event);
    if (event->type() == QEvent::PaletteChange || event->type() == QEvent::FontChange)
        draw();
}

void IconLabel::draw()
{
    const int extent = qRound(fontMetrics().height() * m_lines);
    setPixmap(QIcon::fromTheme(m_name).pixmap(extent, extent));
}
