#pragma once

#include <QFrame>
#include <QStringList>

class QLabel;

/// A quiet strip at the top of the window that says what went wrong at start, until the user closes it.
class NoticeStrip final : public QFrame
{
    Q_OBJECT

public:
    explicit NoticeStrip(QWidget *parent = nullptr);

    /// Shows \a text below the notices that are still shown.
    void addNotice(const QString &text);
    [[nodiscard]] QString text() const;

private:
    void dismiss();

    QLabel *m_label = nullptr;
    QStringList m_notices;
};
