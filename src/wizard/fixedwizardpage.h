#pragma once

#include "parameterswizardpage.h"

#include <QList>
#include <QTime>

#include <memory>

namespace Ui {
class FixedWizardPage;
}

/// The parameters of a fixed schedule: one shift with an optional break, and the working days of a week.
class FixedWizardPage final : public ParametersWizardPage
{
    Q_OBJECT

public:
    explicit FixedWizardPage(QWidget *parent = nullptr);
    ~FixedWizardPage() override;

    [[nodiscard]] QTime shiftBeg() const;
    [[nodiscard]] QTime shiftEnd() const;
    [[nodiscard]] bool hasBreak() const;
    // Valid only with `hasBreak`.
    [[nodiscard]] QTime breakBeg() const;
    [[nodiscard]] QTime breakEnd() const;
    /// Whether the last working day of the week is an hour shorter.
    [[nodiscard]] bool isSubLastHour() const;
    /// Seven entries, Monday first: whether it is a working day.
    [[nodiscard]] QList<bool> workdays() const;

signals:
    void createFixedSchedule();

protected:
    void requestSchedule() override;
    void fitToFont() override;

private:
    std::unique_ptr<Ui::FixedWizardPage> m_ui;
};
