#include "tqdateedit.h"

#include "fieldguards.h"

TQDateEdit::TQDateEdit(QWidget *parent)
    : QDateEdit(parent)
{
    setDisplayFormat(QStringLiteral("dd.MM.yyyy"));
    setCalendarPopup(true);
    ignoreWheelWithoutFocus(this);
}
