#pragma once

#include "tqwizardpage.h"

#include <memory>

namespace Ui {
class FinishWizardPage;
}

/// The last page of the wizards that create a schedule: waits for the outcome and shows it.
class FinishWizardPage final : public TQWizardPage
{
    Q_OBJECT

public:
    explicit FinishWizardPage(QWidget *parent = nullptr);
    ~FinishWizardPage() override;

    void initializePage() override;
    [[nodiscard]] bool isComplete() const override;

    /// What the user should know beyond the outcome, shown below it; empty for nothing.
    void setDetails(const QString &details);

public slots:
    /// Ends the waiting. \a message is shown as it is; an empty one is replaced by the general words for the outcome.
    void finished(bool ok, const QString &message);

private:
    void showIcon(const QString &name);

    std::unique_ptr<Ui::FinishWizardPage> m_ui;
    bool m_completed = false;
};
