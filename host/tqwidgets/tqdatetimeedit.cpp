#include "tqdatetimeedit.h"

#include "wheelguard.h"

TQDateTimeEdit::TQDateTimeEdit(QWidget *parent)
    : QDateTimeEdit(parent)
{
    guardWheel(this);
}
