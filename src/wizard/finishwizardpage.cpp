#include "finishwizardpage.h"

#include "ui_finishwizardpage.h"

#include <QIcon>

FinishWizardPage::FinishWizardPage(QWidget *parent)
    : TQWizardPage(parent)
    , m_ui(std::make_unique<Ui::FinishWizardPage>())
{
    m_ui->setupUi(this);
    m_ui->iconLabel->hide();
    m_ui->detailsLabel->hide();
}

FinishWizardPage::~FinishWizardPage() = default;

void FinishWizardPage::initializePage()
{
    m_ui->messageLabel->setText(tr("Выполняется создание графика работ..."));
}

bool FinishWizardPage::isComplete() const
{
    return m_completed;
}

void FinishWizardPage::setDetails(const QString &details)
{
    m_ui->detailsLabel->setText(details);
    m_ui->detailsLabel->setVisible(!details.isEmpty());
}

void FinishWizardPage::finished(bool ok, const QString &message)
{
    const QString defaultText =
        ok ? tr("Создание графика успешно завершено!") : tr("Во время создания графика работ произошла ошибка!");
    m_ui->messageLabel->setText(message.isEmpty() ? defaultText : message);
    m_ui->progressBar->hide();
    showIcon(ok ? QStringLiteral("dialog-ok") : QStringLiteral("dialog-error"));
    m_completed = true;
    emit completeChanged();
}

void FinishWizardPage::showIcon(const QString &name)
{
    const int side = 2 * fontMetrics().height();
    m_ui->iconLabel->setPixmap(QIcon::fromTheme(name).pixmap(window()->windowHandle(), QSize(side, side)));
    m_ui->iconLabel->show();
}
