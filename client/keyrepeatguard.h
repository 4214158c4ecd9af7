#pragma once

#include <QObject>

/// Keeps a Return key that is held down from confirming the dialog that it has just opened.
class KeyRepeatGuard final : public QObject
{
    Q_OBJECT

public:
    /// Filters the events of the whole application while it exists.
    explicit KeyRepeatGuard(QObject *parent = nullptr);

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    ulong m_released = 0; ///< timestamp of the last release
};
