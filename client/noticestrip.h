#pragma once

#include <QFrame>
#include <QStringList>

class QLabel;

/// A strip at the top of the window that lists failures at start until the operator closes it.
class NoticeStrip final : public QFrame
{
    Q_OBJECT

public:
    explicit NoticeStrip(QWidget *parent = nullptr);

    /// Appends \a text to the notices that are shown.
    void addNotice(const QString &text);
    [[nodiscard]] QString text() const;

private:
    void dismiss();

    QLabel *m_label = nullptr;
    QStringList m_notices;
};
