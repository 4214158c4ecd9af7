#include "freewizardpage.h"

#include "scheduleutil.h"
#include "ui_freewizardpage.h"

FreeWizardPage::FreeWizardPage(QWidget *parent)
    : ParametersWizardPage(parent)
    , m_ui(std::make_unique<Ui::FreeWizardPage>())
{
    m_ui->setupUi(this);
    setNameWidget(m_ui->nameWidget);
    connect(m_ui->freeStartEdit, &QTimeEdit::timeChanged, this, &FreeWizardPage::updateFreeNorm);
    connect(m_ui->freeFinishEdit, &QTimeEdit::timeChanged, this, &FreeWizardPage::updateFreeNorm);
    connect(m_ui->freeBreakEdit, qOverload<int>(&QSpinBox::valueChanged), this, &FreeWizardPage::updateFreeNorm);
    connect(m_ui->cbFreeUseNorm, &QCheckBox::clicked, this, &FreeWizardPage::updateFreeNorm);
}

FreeWizardPage::~FreeWizardPage() = default;

int FreeWizardPage::freeStart() const
{
    return m_ui->cbFreeUseStart->isChecked() ? ScheduleUtil::secondsOf(m_ui->freeStartEdit->time()) : 0;
}

int FreeWizardPage::freeFinish() const
{
    return m_ui->cbFreeUseFinish->isChecked() ? ScheduleUtil::secondsOf(m_ui->freeFinishEdit->time()) : 0;
}

int FreeWizardPage::freeNorm() const
{
    if (!m_ui->cbFreeUseNorm->isChecked())
        return 0;
    return m_ui->freeNormHEdit->value() * 3600 + m_ui->freeNormMEdit->value() * 60;
}

int FreeWizardPage::freeBreak() const
{
    return m_ui->cbFreeUseBreak->isChecked() ? m_ui->freeBreakEdit->value() * 60 : 0;
}

void FreeWizardPage::updateFreeNorm()
{
    // The start counts even while it is no limit: it is still when people are expected to begin.
    if (!m_ui->cbFreeUseFinish->isChecked() || !m_ui->cbFreeUseNorm->isChecked())
        return;
    const int span = m_ui->freeStartEdit->time().secsTo(m_ui->freeFinishEdit->time());
    if (span <= 0)
        return;
    const int norm = qMax(0, span - freeBreak());
    m_ui->freeNormHEdit->setValue(norm / 3600);
    m_ui->freeNormMEdit->setValue(norm % 3600 / 60);
}

void FreeWizardPage::requestSchedule()
{
    emit createUnregulSchedule();
}
