#pragma once

#include "tqwidgets_export.h"

#include <QLineEdit>

/// A line edit that can mark itself while its text is not acceptable.
class TQWIDGETS_EXPORT ParameterizedEdit : public QLineEdit
{
    Q_OBJECT

public:
    /// Accepts every text.
    explicit ParameterizedEdit(QWidget *parent = nullptr);

    /// Whether a text without a visible character is acceptable, whatever the validator says of it; it is at first.
    void setEmptyTextAllowed(bool allowed);
    /// What `setEmptyTextAllowed` was given.
    [[nodiscard]] bool isEmptyTextAllowed() const;
    /// Whether a red frame shows that the text is not acceptable; it does not at first.
    void highlightValidation(bool highlight);
    /// Whether the text is acceptable to the validator and to the rule for empty texts.
    [[nodiscard]] bool isValid() const;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    bool m_emptyAllowed = true;
    bool m_highlight = false;
};
