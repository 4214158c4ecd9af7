#pragma once

#include "tqwidgets_export.h"

#include <QValidator>

/// Accepts any text that is not blank. A blank text is `Intermediate`, so that typing can go through it.
class TQWIDGETS_EXPORT EmptyTextValidator : public QValidator
{
    Q_OBJECT

public:
    explicit EmptyTextValidator(QObject *parent = nullptr);

    /// `Acceptable` for a text with a visible character, else `Intermediate`; does not change the arguments.
    [[nodiscard]] State validate(QString &input, int &pos) const override;
};
