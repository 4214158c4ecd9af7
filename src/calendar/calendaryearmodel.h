#pragma once

#include "calendardaysmodel.h"

/// One year as a table: a row per month with its name and total, then the days 1 to 31.
class CalendarYearModel final : public CalendarDaysModel
{
    Q_OBJECT

public:
    enum Column
    {
        MonthColumn,
        TotalColumn,
        FirstDayColumn,
        LastDayColumn = FirstDayColumn + 30,
        ColumnCount
    };

    explicit CalendarYearModel(QObject *parent = nullptr);

    void setYear(int year);
    using CalendarDaysModel::setCalendarDays;
    void setCalendarDays(int year, const QList<orvex::SCHEDULE_CALENDAR_DAY> &days);
    /// Also reports the day cells as changed.
    void setColor(const QString &color) override;

    [[nodiscard]] QDate dateFromIndex(const QModelIndex &index) const override;
    [[nodiscard]] QModelIndex dateToIndex(const QDate &date) const override;
    /// Seconds worked in a month, in all records of the list.
    [[nodiscard]] static quint32 monthNormTotal(const QList<orvex::SCHEDULE_CALENDAR_DAY> &days, int year, int month);
    [[nodiscard]] quint32 monthNormTotal(int year, int month) const;

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation,
                                      int role = Qt::DisplayRole) const override;

protected:
    [[nodiscard]] QString rowText(int row, int column) const override;

private:
    int m_year = 0;
};
