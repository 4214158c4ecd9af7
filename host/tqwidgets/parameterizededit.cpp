#include "parameterizededit.h"

#include "tqstyles.h"

#include <QPainter>

namespace {

constexpr double FrameWidth = 1.5;
constexpr double FrameRadius = 2.0;

} // namespace

ParameterizedEdit::ParameterizedEdit(QWidget *parent)
    : QLineEdit(parent)
{
}

void ParameterizedEdit::setEmptyTextAllowed(bool allowed)
{
    m_emptyAllowed = allowed;
    update();
}

bool ParameterizedEdit::isEmptyTextAllowed() const
{
    return m_emptyAllowed;
}

void ParameterizedEdit::highlightValidation(bool highlight)
{
    m_highlight = highlight;
    update();
}

bool ParameterizedEdit::isValid() const
{
    return text().trimmed().isEmpty() ? m_emptyAllowed : hasAcceptableInput();
}

void ParameterizedEdit::paintEvent(QPaintEvent *event)
{
    QLineEdit::paintEvent(event);
    if (!m_highlight || !isEnabled() || isValid())
        return;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(tqstyles::red(), FrameWidth));
    const double inset = FrameWidth / 2;
    painter.drawRoundedRect(QRectF(rect()).adjusted(inset, inset, -inset, -inset), FrameRadius, FrameRadius);
}
