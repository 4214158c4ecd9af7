#include "dialoghandler.h"

#include "hands.h"

#include <QApplication>
#include <QPointer>

#include <utility>

namespace support {

DialogHandler::DialogHandler(QDialogButtonBox::StandardButton button, Steps steps)
    : m_button(button)
    , m_steps(std::move(steps))
{
    connect(&m_timer, &QTimer::timeout, this, &DialogHandler::handle);
    m_timer.start(0);
}

void DialogHandler::handle()
{
    const QPointer<QDialog> dialog = qobject_cast<QDialog *>(QApplication::activeModalWidget());
    if (!dialog)
        return;
    m_timer.stop();
    m_hasOpened = true;
    activateWindow(dialog);
    if (m_steps)
        m_steps(*dialog);
    if (!dialog)
        return;
    if (m_button != QDialogButtonBox::NoButton)
        dialog->findChild<QDialogButtonBox *>()->button(m_button)->click();
    else if (dialog->isVisible())
        dialog->reject();
}

} // namespace support
