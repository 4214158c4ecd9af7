#pragma once

#include "parameterswizardpage.h"

#include <memory>

namespace Ui {
class FreeWizardPage;
}

/// The parameters of a free schedule: optional limits of the working day.
class FreeWizardPage final : public ParametersWizardPage
{
    Q_OBJECT

public:
    explicit FreeWizardPage(QWidget *parent = nullptr);
    ~FreeWizardPage() override;

    // In seconds; 0: the limit is not used.
    [[nodiscard]] int freeStart() const;
    [[nodiscard]] int freeFinish() const;
    [[nodiscard]] int freeNorm() const;
    [[nodiscard]] int freeBreak() const;

signals:
    void createUnregulSchedule();

protected:
    void requestSchedule() override;

private slots:
    /// Proposes the length of the working day: from start to finish without the break.
    void updateFreeNorm();

private:
    std::unique_ptr<Ui::FreeWizardPage> m_ui;
};
