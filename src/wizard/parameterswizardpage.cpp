#include "parameterswizardpage.h"

#include "schedulenamewidget.h"
#include "schedulewizard.h"

#include <QEvent>
#include <QLineEdit>

ParametersWizardPage::ParametersWizardPage(QWidget *parent)
    : TQWizardPage(parent)
{
}

void ParametersWizardPage::initializePage()
{
    m_nameWidget->findChild<QLineEdit *>()->selectAll();
}

bool ParametersWizardPage::isComplete() const
{
    return !m_nameWidget->name().isEmpty();
}

bool ParametersWizardPage::validatePage()
{
    // What is still being typed counts too; the button's shortcut takes no focus from its field.
    if (auto *field = focusWidget())
        field->clearFocus();
    requestSchedule();
    return true;
}

int ParametersWizardPage::nextId() const
{
    return ScheduleWizard::FinishPageId;
}

void ParametersWizardPage::setNameWidget(ScheduleNameWidget *widget)
{
    m_nameWidget = widget;
    connect(widget, &ScheduleNameWidget::nameChanged, this, &QWizardPage::completeChanged);
}

void ParametersWizardPage::fitToFont() { }

bool ParametersWizardPage::event(QEvent *event)
{
    const bool handled = TQWizardPage::event(event);
    if (event->type() == QEvent::Polish || event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)
        fitToFont();
    return handled;
}
