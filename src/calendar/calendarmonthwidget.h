#pragma once

#include "calendarwidget.h"

#include <memory>

class CalendarMonthModel;

namespace Ui {
class CalendarMonthWidget;
}

/// The editable month calendar of a schedule. The owner loads the days when another month is shown and reads the edited
/// list with `days()`.
class CalendarMonthWidget final : public CalendarWidget
{
    Q_OBJECT

public:
    explicit CalendarMonthWidget(QWidget *parent = nullptr);
    ~CalendarMonthWidget() override;

    void setDate(const QDate &date);
    /// The first day of the month shown.
    [[nodiscard]] QDate date() const;
    void setDateEnabled(bool enabled);
    [[nodiscard]] bool isDateEnabled() const;

signals:
    /// Another month is shown; \a date is its first day.
    void dateChanged(const QDate &date);

public slots:
    void setYear(int year);
    void setMonth(int index);
    /// Clears all days of the list without confirmation.
    void clearDays();

private:
    void showMonth(const QDate &date);

    std::unique_ptr<Ui::CalendarMonthWidget> m_ui;
    CalendarMonthModel *const m_model;
};
