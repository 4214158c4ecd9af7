#pragma once

#include <QObject>

/// Keeps a Return key that is held down from answering the dialog that it has just opened.
class KeyRepeatGuard final : public QObject
{
    Q_OBJECT

public:
    /// Watches the whole application as long as it lives.
    explicit KeyRepeatGuard(QObject *parent = nullptr);

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    ulong m_released = 0; ///< when the key went up last, on the clock of the events
};
