#pragma once

#include "pagelistwizard.h"

class CalendarWizardPage;
class FinishWizardPage;
class FixedWizardPage;
class FreeWizardPage;
class ShiftWizardPage;
class TypeWizardPage;

/// The wizard that creates a common schedule: its type, its parameters, the outcome.
///
/// The wizard builds no schedule. A parameter page that is left with "next" asks for one; whoever answers the request
/// reports the outcome with `createScheduleFinished`, and the last page shows it.
class ScheduleWizard final : public PageListWizard
{
    Q_OBJECT

public:
    enum PageId
    {
        TypePageId,
        FixedPageId,
        ShiftPageId,
        FreePageId,
        CalendarPageId,
        FinishPageId
    };

    explicit ScheduleWizard(QWidget *parent = nullptr);

    [[nodiscard]] TypeWizardPage *typePage() const;
    [[nodiscard]] FixedWizardPage *fixedPage() const;
    [[nodiscard]] ShiftWizardPage *shiftPage() const;
    [[nodiscard]] FreeWizardPage *freePage() const;
    [[nodiscard]] CalendarWizardPage *calendarPage() const;
    [[nodiscard]] FinishWizardPage *finishPage() const;

    /// Proposes a name on every parameter page.
    void setScheduleName(const QString &name);

    [[nodiscard]] QSize sizeHint() const override;

signals:
    void showShiftGuides();
    void createFixedSchedule();
    void createShiftSchedule();
    void createUnregulSchedule();
    void createCalendarSchedule();
    /// The request has ended; an empty \a message leaves the words to the last page.
    void createScheduleFinished(bool ok, const QString &message);

private:
    void addPages();
    void connectPages();
};
