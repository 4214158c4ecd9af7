#pragma once

#include "calendarcelldelegate.h"

/// Cells of the year grid, with the day of the week in the corner if wanted. The owner repaints after a change.
class CalendarDayItemDelegate : public CalendarCellDelegate
{
    Q_OBJECT

public:
    explicit CalendarDayItemDelegate(QObject *parent = nullptr);

public slots:
    void setShowDow(bool show);

protected:
    [[nodiscard]] QString cornerText(const QDate &date) const override;

private:
    bool m_showDow = false;
};
