#pragma once

#include "parameterswizardpage.h"

#include <memory>

namespace Ui {
class FreeWizardPage;
}

/// The parameters of a free schedule: limits of the working day, each used or not.
class FreeWizardPage final : public ParametersWizardPage
{
    Q_OBJECT

public:
    explicit FreeWizardPage(QWidget *parent = nullptr);
    ~FreeWizardPage() override;

    // In seconds; 0 for a limit that is not used.
    [[nodiscard]] int freeStart() const;
    [[nodiscard]] int freeFinish() const;
    [[nodiscard]] int freeNorm() const;
    [[nodiscard]] int freeBreak() const;

signals:
    void createUnregulSchedule();

protected:
    void requestSchedule() override;

private slots:
    /// Proposes the length of the working day from its start, finish and break.
    void updateFreeNorm();

private:
    std::unique_ptr<Ui::FreeWizardPage> m_ui;
};
