#include "closebutton.h"

CloseButton::CloseButton(const QString &name, QWidget *parent)
    : QToolButton(parent)
{
    setIcon(QIcon::fromTheme(QStringLiteral("window-close")));
    setAutoRaise(true);
    setToolTip(tr("Закрыть"));
    setAccessibleName(name);
}
