#pragma once

#include <QObject>
#include <QString>

class QAbstractItemView;

namespace scheduleview {

/// Explains an empty list: paints a text in its middle and sets it as the accessible description.
class EmptyListHint final : public QObject
{
    Q_OBJECT

public:
    /// \a view becomes the parent and must already have its model.
    explicit EmptyListHint(QAbstractItemView *view);

    void setText(const QString &text);

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void update();
    void paint() const;

    QAbstractItemView *const m_view;
    QString m_text;
};

} // namespace scheduleview
