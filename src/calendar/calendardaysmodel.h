#pragma once

#include "calendardaylist.h"

#include <QAbstractItemModel>
#include <QBrush>

/// Base of the month and the year grid: a flat table whose leading columns describe the row and whose other cells are
/// dates. Holds the days and provides the cells' data; a grid maps cells to dates.
class CalendarDaysModel : public QAbstractItemModel
{
    Q_OBJECT

public:
    enum Role
    {
        ShiftIdRole = Qt::UserRole + 1, ///< identifier of the day's shift; no value without a day
        DateRole = Qt::UserRole + 2, ///< the cell's date; invalid for a cell without one
    };

    [[nodiscard]] QList<orvex::SCHEDULE_CALENDAR_DAY> calendarDays() const;
    void setCalendarDays(const QList<orvex::SCHEDULE_CALENDAR_DAY> &days);
    /// The first record of the date, or a default-constructed day.
    [[nodiscard]] orvex::SCHEDULE_CALENDAR_DAY calendarDay(const QDate &date) const;
    /// Position of the date's first record in the list; -1: none, or the date is invalid.
    [[nodiscard]] int calendarDayPos(const QDate &date) const;

    /// Sets the background of working days by the name of a colour; an invalid name means none.
    virtual void setColor(const QString &color);

    [[nodiscard]] virtual QDate dateFromIndex(const QModelIndex &index) const = 0;
    [[nodiscard]] virtual QModelIndex dateToIndex(const QDate &date) const = 0;

    /// Reports the totals as changed. `setData` does not, so the caller does it once per batch.
    void updateTotal();
    void updateDays();

    // By the current shift guide; times in seconds.
    [[nodiscard]] static QString dayShiftName(const orvex::SCHEDULE_CALENDAR_DAY &day);
    [[nodiscard]] static qint32 dayStartTime(const orvex::SCHEDULE_CALENDAR_DAY &day);
    [[nodiscard]] static qint32 dayFinishTime(const orvex::SCHEDULE_CALENDAR_DAY &day);
    [[nodiscard]] static qint32 dayNormTime(const orvex::SCHEDULE_CALENDAR_DAY &day);
    [[nodiscard]] static qint32 dayNightTime(const orvex::SCHEDULE_CALENDAR_DAY &day);
    [[nodiscard]] static qint32 dayBreakTime(const orvex::SCHEDULE_CALENDAR_DAY &day);

    [[nodiscard]] QModelIndex index(int row, int column, const QModelIndex &parent = {}) const override;
    [[nodiscard]] QModelIndex parent(const QModelIndex &child) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    /// Assigns the shift \a value to the cell's date; accepts only `ShiftIdRole`.
    bool setData(const QModelIndex &index, const QVariant &value, int role = Qt::EditRole) override;
    [[nodiscard]] Qt::ItemFlags flags(const QModelIndex &index) const override;

protected:
    CalendarDaysModel(int firstDayColumn, const QString &color, QObject *parent);

    /// Text of a cell before the first day column.
    [[nodiscard]] virtual QString rowText(int row, int column) const = 0;
    /// Whole hours: "40ч."
    [[nodiscard]] QString totalText(quint32 seconds) const;
    /// Replaces the list; the caller resets the model.
    void replaceDays(const QList<orvex::SCHEDULE_CALENDAR_DAY> &days);
    [[nodiscard]] const CalendarDayList &dayList() const { return m_days; }

private:
    void emitColumnsChanged(int first, int last);
    [[nodiscard]] QVariant displayText(const QDate &date) const;
    [[nodiscard]] QVariant shiftId(const QDate &date) const;
    [[nodiscard]] QVariant toolTip(const QDate &date) const;
    [[nodiscard]] QVariant background(const QDate &date) const;

    const int m_firstDayColumn;
    CalendarDayList m_days;
    QBrush m_dayBrush;
};
