#pragma once

#include "tqwizardpage.h"

#include <memory>

namespace Ui {
class FinishWizardPage;
}

/// The last page of the creation wizards: waits for the outcome and shows it.
class FinishWizardPage final : public TQWizardPage
{
    Q_OBJECT

public:
    explicit FinishWizardPage(QWidget *parent = nullptr);
    ~FinishWizardPage() override;

    void initializePage() override;
    [[nodiscard]] bool isComplete() const override;

    /// Text below the outcome; empty for none.
    void setDetails(const QString &details);

public slots:
    /// Shows \a message, or a standard text if it is empty, and completes the page.
    void finished(bool ok, const QString &message);

private:
    void showIcon(const QString &name);

    std::unique_ptr<Ui::FinishWizardPage> m_ui;
    bool m_completed = false;
};
