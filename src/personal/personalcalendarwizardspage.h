#pragma once

#include "calendardays.h"
#include "requestwizardpage.h"

#include <QDate>
#include <QList>

#include <memory>

class PersonalEmployeeWizardPage;

namespace Ui {
class PersonalCalendarWizardsPage;
}

/// The month of a new personal schedule and the shifts of its days.
class PersonalCalendarWizardsPage final : public RequestWizardPage
{
    Q_OBJECT

public:
    /// \a employeePage must outlive this page.
    PersonalCalendarWizardsPage(const PersonalEmployeeWizardPage *employeePage, QWidget *parent);
    ~PersonalCalendarWizardsPage() override;

    /// The first day of the month shown.
    [[nodiscard]] QDate date() const;
    /// The marked days of that month only.
    [[nodiscard]] QList<orvex::SCHEDULE_CALENDAR_DAY> days() const;
    /// The name of the colour as given by `QColor::name()`; empty for none.
    [[nodiscard]] QString color() const;

    void initializePage() override;
    /// False after the employee was removed.
    [[nodiscard]] bool isComplete() const override;

signals:
    void createPersonalSchedule();
    void showShiftGuides();
    /// The employee's photo in the local storage may be out of date.
    void photoRequest(quint32 employeeId);

protected:
    void requestSchedule() override;

private:
    void connectContents();
    void schedulesChanged(const QList<quint32> &ids);
    void updateNotice();

    std::unique_ptr<Ui::PersonalCalendarWizardsPage> m_ui;
    const PersonalEmployeeWizardPage *const m_employeePage;
};
