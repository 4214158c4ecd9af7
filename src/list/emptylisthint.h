#pragma once

#include <QObject>
#include <QString>

class QAbstractItemView;

namespace scheduleview {

/// Explains an empty list: the text is painted in its middle and set as its accessible description.
class EmptyListHint : public QObject
{
    Q_OBJECT

public:
    /// \a view owns the hint and must have its model already.
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
