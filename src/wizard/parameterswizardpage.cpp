#include "parameterswizardpage.h"

#include "schedulenamewidget.h"
#include "wizardpageids.h"

#include <QEvent>

void ParametersWizardPage::initializePage()
{
    m_nameWidget->selectName();
}

bool ParametersWizardPage::isComplete() const
{
    return !m_nameWidget->name().isEmpty();
}

int ParametersWizardPage::nextId() const
{
    return schedulewizard::FinishPageId;
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
