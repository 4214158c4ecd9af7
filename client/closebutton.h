#pragma once

#include <QToolButton>

/// The button with a cross that closes a message.
class CloseButton final : public QToolButton
{
    Q_OBJECT

public:
    /// \a name is the accessible name.
    CloseButton(const QString &name, QWidget *parent);
};
