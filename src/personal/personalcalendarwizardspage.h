#pragma once

#include "calendardays.h"
#include "tqwizardpage.h"

#include <QDate>
#include <QList>

#include <memory>

namespace Ui {
class PersonalCalendarWizardsPage;
}

/// The month of a new personal schedule: which shift each of its days carries.
class PersonalCalendarWizardsPage final : public TQWizardPage
{
    Q_OBJECT

public:
    explicit PersonalCalendarWizardsPage(QWidget *parent = nullptr);
    ~PersonalCalendarWizardsPage() override;

    /// The first day of the month shown.
    [[nodiscard]] QDate date() const;
    /// The marked days of that month.
    [[nodiscard]] QList<orvex::SCHEDULE_CALENDAR_DAY> days() const;
    /// `QColor::name()` text; empty for none.
    [[nodiscard]] QString color() const;

    void initializePage() override;
    /// False once the employee is gone.
    [[nodiscard]] bool isComplete() const override;
    /// Asks for the schedule and goes on at once: the outcome is the last page's.
    bool validatePage() override;

signals:
    void createPersonalSchedule();
    void showShiftGuides();
    /// The employee's photo in the local storage is to be brought up to date.
    void photoRequest(quint32 employee);

private:
    void connectContents();
    void schedulesChanged(const QList<quint32> &ids);
    void updateNotice();

    std::unique_ptr<Ui::PersonalCalendarWizardsPage> m_ui;
};
