#include "tqdatetimeedit.h"

#include "fieldguards.h"

TQDateTimeEdit::TQDateTimeEdit(QWidget *parent)
    : QDateTimeEdit(parent)
{
    ignoreWheelWithoutFocus(this);
}
