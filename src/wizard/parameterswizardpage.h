#pragma once

#include "requestwizardpage.h"

class ScheduleNameWidget;

/// Base of the schedule wizard's parameter pages: name and colour of the schedule; without a name the page is not
/// complete.
class ParametersWizardPage : public RequestWizardPage
{
    Q_OBJECT

public:
    using RequestWizardPage::RequestWizardPage;

    [[nodiscard]] ScheduleNameWidget *nameWidget() const { return m_nameWidget; }

    /// Selects the proposed name, so that typing replaces it.
    void initializePage() override;
    [[nodiscard]] bool isComplete() const override;
    [[nodiscard]] int nextId() const override;

protected:
    /// Called once by the page, with the widget of its form.
    void setNameWidget(ScheduleNameWidget *widget);
    /// Sets the sizes that the page's layout does not derive from the font; called before the page is first shown and
    /// when its font changes.
    virtual void fitToFont();
    bool event(QEvent *event) override;

private:
    ScheduleNameWidget *m_nameWidget = nullptr;
};
