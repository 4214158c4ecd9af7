#pragma once

#include "calendarcelldelegate.h"

/// Draws cells of the month grid, with the day of the month in the corner.
class CalendarMonthItemDelegate final : public CalendarCellDelegate
{
    Q_OBJECT

public:
    explicit CalendarMonthItemDelegate(QObject *parent = nullptr);

protected:
    [[nodiscard]] QString cornerText(const QDate &date) const override;
};
