#pragma once

#include "calendarwidget.h"

#include <memory>

class CalendarDayItemDelegate;
class CalendarYearModel;

namespace Ui {
class CalendarYearWidget;
}

/// The editable year calendar of a schedule. Its owner loads the days of another year when it is shown, and reads the
/// edited list back with `days()`. The scale and the days of the week are remembered for the user.
class CalendarYearWidget : public CalendarWidget
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
    /// Shows a year in the table; the year box stays as it is.
    void setYear(int year);
    void setShowDows(bool show);
    void setScale(int scale);
    /// Repeats the shifts of the selected days from the day after them to the end of that day's year.
    void applyYearPeriodic();

protected:
    void addPeriods(QMenu *menu) override;

private:
    void initTable();

    std::unique_ptr<Ui::CalendarYearWidget> m_ui;
    CalendarYearModel *m_model = nullptr;
    CalendarDayItemDelegate *m_delegate = nullptr;
};
