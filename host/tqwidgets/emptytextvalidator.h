#pragma once

#include "tqwidgets_export.h"

#include <QValidator>

/// Accepts any text but an empty one and one of spaces alone. Such a text can still be typed through: it is
/// `Intermediate`, never `Invalid`.
class TQWIDGETS_EXPORT EmptyTextValidator : public QValidator
{
    Q_OBJECT

public:
    explicit EmptyTextValidator(QObject *parent = nullptr);

    /// `Acceptable` for a text with a visible character, else `Intermediate`; changes neither argument.
    State validate(QString &input, int &pos) const override;
};
