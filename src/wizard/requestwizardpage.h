#pragma once

#include "tqwizardpage.h"

/// A page that requests the new schedule when it is left with "Next".
class RequestWizardPage : public TQWizardPage
{
    Q_OBJECT

public:
    using TQWizardPage::TQWizardPage;

    /// Requests the schedule and returns true at once: the last page waits for the outcome.
    bool validatePage() override;

protected:
    /// Emits the page's own request signal.
    virtual void requestSchedule() = 0;
};
