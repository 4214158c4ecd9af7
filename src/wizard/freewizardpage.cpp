#include "freewizardpage.h"

#include "ui_freewizardpage.h"

FreeWizardPage::FreeWizardPage(QWidget *parent)
    : ParametersWizardPage(parent)
    , m_ui(std::make_unique<Ui::FreeWizardPage>())
{
    m_ui->setupUi(this);
    setNameWidget(m_ui->nameWidget);
    connect(m_ui->freeLimits, &FreeLimitsWidget::spanChanged, this, &FreeWizardPage::updateFreeNorm);
    connect(m_ui->freeLimits, &FreeLimitsWidget::normSwitchedOn, this, &FreeWizardPage::updateFreeNorm);
}

FreeWizardPage::~FreeWizardPage() = default;

int FreeWizardPage::freeStart() const
{
    return m_ui->freeLimits->freeStart();
}

int FreeWizardPage::freeFinish() const
{
    return m_ui->freeLimits->freeFinish();
}

int FreeWizardPage::freeNorm() const
{
    return m_ui->freeLimits->freeNorm();
}

int FreeWizardPage::freeBreak() const
{
    return m_ui->freeLimits->freeBreak();
}

void FreeWizardPage::updateFreeNorm()
{
    auto *limits = m_ui->freeLimits;
    // The start time counts even if it is not used as a limit.
    if (!limits->usesFinish() || !limits->usesNorm())
        return;
    const int span = limits->startTime().secsTo(limits->finishTime());
    if (span > 0)
        limits->proposeNorm(qMax(0, span - limits->freeBreak()));
}

void FreeWizardPage::requestSchedule()
{
    emit createUnregulSchedule();
}
