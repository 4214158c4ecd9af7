#include "emptytextvalidator.h"

EmptyTextValidator::EmptyTextValidator(QObject *parent)
    : QValidator(parent)
{
}

QValidator::State EmptyTextValidator::validate(QString &input, int &pos) const
{
    Q_UNUSED(pos)
    return input.trimmed().isEmpty() ? Intermediate : Acceptable;
}
