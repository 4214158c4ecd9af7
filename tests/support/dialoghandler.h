#pragma once

#include <QDialogButtonBox>
#include <QTimer>

#include <functional>

class QDialog;

namespace support {

/// Acts in the modal dialog that opens next, whose event loop would otherwise never end.
class DialogHandler : public QObject
{
public:
    using Steps = std::function<void(QDialog &)>;

    /// Runs the steps in the dialog, then presses the button; without a button, rejects the dialog if it is still
    /// open.
    explicit DialogHandler(QDialogButtonBox::StandardButton button, Steps steps = {});

    /// Whether a dialog has opened.
    [[nodiscard]] bool hasOpened() const { return m_hasOpened; }

private:
    void handle();

    QDialogButtonBox::StandardButton m_button;
    Steps m_steps;
    QTimer m_timer;
    bool m_hasOpened = false;
};

} // namespace support
