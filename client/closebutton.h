#pragma once

#include <QToolButton>

/// The cross that closes a message.
class CloseButton final : public QToolButton
{
    Q_OBJECT

public:
    /// \a name is what a screen reader says.
    CloseButton(const QString &name, QWidget *parent);
};
