#pragma once

#include "pagelistwizard.h"

class FinishWizardPage;

/// Base of the wizards that create a schedule.
///
/// A wizard builds no schedule. A page that is left with "Next" requests one with a signal of the wizard; the receiver
/// calls `reportOutcome`, and the last page shows the outcome.
class CreationWizard : public PageListWizard
{
    Q_OBJECT

public:
    [[nodiscard]] FinishWizardPage *finishPage() const { return m_finishPage; }
    /// Shows \a details below the outcome; empty for none.
    void setDetails(const QString &details);

public slots:
    /// Emits the wizard's `createScheduleFinished`. For an empty \a message the last page shows a standard text.
    virtual void reportOutcome(bool ok, const QString &message) = 0;

protected:
    CreationWizard(const QString &title, QWidget *parent);

    /// Called once, after the other pages were added.
    void addFinishPage(int id);

private:
    FinishWizardPage *m_finishPage = nullptr;
};
