#include "creationwizard.h"

#include "finishwizardpage.h"

#include <QIcon>

CreationWizard::CreationWizard(const QString &title, QWidget *parent)
    : PageListWizard(parent)
{
    setWindowTitle(title);
    setWindowIcon(QIcon::fromTheme(QStringLiteral("plugin-schedule")));
    setOption(NoCancelButtonOnLastPage);
    setOption(NoBackButtonOnStartPage);
    setOption(NoBackButtonOnLastPage);
}

void CreationWizard::setDetails(const QString &details)
{
    m_finishPage->setDetails(details);
}

void CreationWizard::addFinishPage(int id)
{
    m_finishPage = new FinishWizardPage(this);
    setPage(id, m_finishPage);
    setPageListVisible(true);
}
