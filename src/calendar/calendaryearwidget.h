#pragma once

#include "calendarwidget.h"

#include <memory>

class CalendarDayItemDelegate;
class CalendarYearModel;

namespace Ui {
class CalendarYearWidget;
}

/// The editable year calendar of a schedule. The owner loads the days when another year is shown and reads the edited
/// list with `days()`. Scale and display of the days of the week are user settings.
class CalendarYearWidget final : public CalendarWidget
{
    Q_OBJECT

public:
    explicit CalendarYearWidget(QWidget *parent = nullptr);
    ~CalendarYearWidget() override;

    [[nodiscard]] int year() const;

signals:
    /// The year box shows another year.
    void yearChanged(int year);

public slots:
    /// Shows a year in the table; the year box does not follow.
    void setYear(int year);
    void setShowDows(bool show);
    void setScale(int scale);
    /// Repeats the selected days' shifts from the next day to the end of its year.
    void applyYearPeriodic();

protected:
    void addPeriods(QMenu *menu) override;

private:
    void initTable();

    std::unique_ptr<Ui::CalendarYearWidget> m_ui;
    CalendarYearModel *const m_model;
    CalendarDayItemDelegate *const m_delegate;
};
