#include "wheelguard.h"

#include <QEvent>
#include <QWidget>

namespace {

class WheelGuard final : public QObject
{
public:
    explicit WheelGuard(QWidget *field)
        : QObject(field)
        , m_field(field)
    {
        field->installEventFilter(this);
    }

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() != QEvent::Wheel || watched != m_field || m_field->hasFocus())
            return QObject::eventFilter(watched, event);
        event->ignore();
        return true;
    }

private:
    QWidget *m_field;
};

} // namespace

void guardWheel(QWidget *field)
{
    field->setFocusPolicy(Qt::StrongFocus);
    new WheelGuard(field);
}
