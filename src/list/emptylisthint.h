#pragma once

#include <QObject>
#include <QString>

class QAbstractItemView;

namespace scheduleview {

/// Says in an empty list why there is nothing: painted in its middle, and told to screen readers.
class EmptyListHint : public QObject
{
    Q_OBJECT

public:
    /// \a view has its model already, and owns the hint.
    explicit EmptyListHint(QAbstractItemView *view);

    void setText(const QString &text);

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void update();
    void paint() const;

    QAbstractItemView *m_view = nullptr;
    QString m_text;
};

} // namespace scheduleview
