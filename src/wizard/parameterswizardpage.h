#pragma once

#include "tqwizardpage.h"

class ScheduleNameWidget;

/// What the parameter pages of a schedule wizard share: the schedule's name and colour, without a name no going on, and
/// the request for the schedule when the page is left with "next".
class ParametersWizardPage : public TQWizardPage
{
    Q_OBJECT

public:
    explicit ParametersWizardPage(QWidget *parent = nullptr);

    [[nodiscard]] ScheduleNameWidget *nameWidget() const { return m_nameWidget; }

    /// Puts the cursor on the proposed name, ready to be typed over.
    void initializePage() override;
    [[nodiscard]] bool isComplete() const override;
    /// Asks for the schedule. Goes on without waiting for the outcome: that is the last page's.
    bool validatePage() override;
    [[nodiscard]] int nextId() const override;

protected:
    /// Called once by the page, with the widget of its form.
    void setNameWidget(ScheduleNameWidget *widget);
    /// Emits the page's own request signal.
    virtual void requestSchedule() = 0;
    /// Makes room for what the page's layout does not make room for by itself; called before it is first
    /// shown and when its font changes.
    virtual void fitToFont();
    bool event(QEvent *event) override;

private:
    ScheduleNameWidget *m_nameWidget = nullptr;
};
