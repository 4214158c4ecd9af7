#pragma once

#include <QObject>

class QSplitter;

namespace scheduleview {

/// Keeps the list in a splitter usable in a narrow window: the panel beside it shrinks first, down to its minimum.
class ListWidth final : public QObject
{
    Q_OBJECT

public:
    /// The list is the first widget of \a splitter, the panel the second. The splitter becomes the parent.
    explicit ListWidth(QSplitter *splitter);

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void update();

    QSplitter *const m_splitter;
};

} // namespace scheduleview
