#pragma once

#include <QTextEdit>

/// Shows a description. It draws the lines of tables with a solid border in the spacing between their cells: Qt strokes
/// the border of every cell as a path, which takes longer than painting the whole text.
class DescriptionView final : public QTextEdit
{
    Q_OBJECT

public:
    using QTextEdit::QTextEdit;

protected:
    void paintEvent(QPaintEvent *event) override;
};
