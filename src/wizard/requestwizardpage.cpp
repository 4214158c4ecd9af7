#include "requestwizardpage.h"

bool RequestWizardPage::validatePage()
{
    // Commits a value that is still being typed: the button's shortcut does not move the focus.
    if (auto *field = focusWidget())
        field->clearFocus();
    requestSchedule();
    return true;
}
