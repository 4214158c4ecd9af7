#pragma once

#include "tqwidgets_export.h"

#include <QLineEdit>

/// A line edit that can show that its text is not acceptable.
class TQWIDGETS_EXPORT ParameterizedEdit : public QLineEdit
{
    Q_OBJECT

public:
    /// Accepts any text.
    explicit ParameterizedEdit(QWidget *parent = nullptr);

    /// Sets whether a blank text is acceptable, regardless of the validator; true at first.
    void setEmptyTextAllowed(bool allowed);
    [[nodiscard]] bool isEmptyTextAllowed() const;
    /// Sets whether a red frame is shown while the text is not acceptable; false at first.
    void highlightValidation(bool highlight);
    /// Whether the text is acceptable by the validator and by the rule for blank texts.
    [[nodiscard]] bool isValid() const;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    bool m_emptyAllowed = true;
    bool m_highlight = false;
};
