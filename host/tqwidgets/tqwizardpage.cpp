#include "tqwizardpage.h"

TQWizardPage::TQWizardPage(QWidget *parent)
    : QWizardPage(parent)
{
}

QString TQWizardPage::pageListText() const
{
    return {};
}
