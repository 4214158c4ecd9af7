#pragma once

#include "calendardaysmodel.h"

/// One month as a grid: a row per week, with the week's total, then Monday to Sunday.
class CalendarMonthModel final : public CalendarDaysModel
{
    Q_OBJECT

public:
    enum Column
    {
        TotalColumn,
        MondayColumn,
        SundayColumn = 7,
        ColumnCount
    };

    explicit CalendarMonthModel(QObject *parent = nullptr);

    void setDate(const QDate &date);
    using CalendarDaysModel::setCalendarDays;
    void setCalendarDays(const QDate &date, const QList<orvex::SCHEDULE_CALENDAR_DAY> &days);

    [[nodiscard]] QDate dateFromIndex(const QModelIndex &index) const override;
    [[nodiscard]] QModelIndex dateToIndex(const QDate &date) const override;
    /// Seconds worked on the month's dates in this week, in all records of these dates.
    [[nodiscard]] quint32 weekNormTotal(int row) const;

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation,
                                      int role = Qt::DisplayRole) const override;

protected:
    [[nodiscard]] QString rowText(int row, int column) const override;

private:
    void setMonth(const QDate &date);
    [[nodiscard]] QDate firstDay() const { return QDate(m_year, m_month, 1); }
    [[nodiscard]] bool isInMonth(const QDate &date) const;

    int m_year = 0;
    int m_month = 0;
};
