#pragma once

#include "tqwizardpage.h"

#include <memory>

namespace Ui {
class TypeWizardPage;
}

/// The first page of the schedule wizard: the choice of the type.
class TypeWizardPage final : public TQWizardPage
{
    Q_OBJECT

public:
    explicit TypeWizardPage(QWidget *parent = nullptr);
    ~TypeWizardPage() override;

    /// `orvex::ScheduleMode` of the chosen type; -1 when none is chosen.
    [[nodiscard]] int scheduleType() const;
    [[nodiscard]] QString pageListText() const override;
    [[nodiscard]] int nextId() const override;
    [[nodiscard]] bool isComplete() const override;

private:
    std::unique_ptr<Ui::TypeWizardPage> m_ui;
};
