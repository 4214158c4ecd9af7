#pragma once

#include "creationwizard.h"

class CalendarWizardPage;
class FixedWizardPage;
class FreeWizardPage;
class ShiftWizardPage;
class TypeWizardPage;

/// The wizard that creates a common schedule: type, parameters, outcome.
class ScheduleWizard final : public CreationWizard
{
    Q_OBJECT

public:
    explicit ScheduleWizard(QWidget *parent = nullptr);

    [[nodiscard]] TypeWizardPage *typePage() const;
    [[nodiscard]] FixedWizardPage *fixedPage() const;
    [[nodiscard]] ShiftWizardPage *shiftPage() const;
    [[nodiscard]] FreeWizardPage *freePage() const;
    [[nodiscard]] CalendarWizardPage *calendarPage() const;

    /// Sets the proposed name on every parameter page.
    void setScheduleName(const QString &name);

    [[nodiscard]] QSize sizeHint() const override;

signals:
    void showShiftGuides();
    void createFixedSchedule();
    void createShiftSchedule();
    void createUnregulSchedule();
    void createCalendarSchedule();
    void createScheduleFinished(bool ok, const QString &message);

public slots:
    void reportOutcome(bool ok, const QString &message) override;

private:
    void addPages();
    void connectPages();
};
