#include "fieldguards.h"

#include <QKeyEvent>
#include <QSpinBox>

namespace {

class WheelFilter final : public QObject
{
public:
    explicit WheelFilter(QWidget *field)
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

class ReturnFilter final : public QObject
{
public:
    explicit ReturnFilter(QSpinBox *field)
        : QObject(field)
        , m_field(field)
    {
        field->installEventFilter(this);
    }

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() != QEvent::KeyPress)
            return QObject::eventFilter(watched, event);
        const int key = static_cast<QKeyEvent *>(event)->key();
        if (key != Qt::Key_Return && key != Qt::Key_Enter)
            return QObject::eventFilter(watched, event);
        m_field->interpretText();
        return true;
    }

private:
    QSpinBox *m_field;
};

} // namespace

void ignoreWheelWithoutFocus(QWidget *field)
{
    field->setFocusPolicy(Qt::StrongFocus);
    new WheelFilter(field);
}

void commitOnReturn(QSpinBox *field)
{
    new ReturnFilter(field);
}
