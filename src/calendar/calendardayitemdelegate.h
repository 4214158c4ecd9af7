#pragma once

#include "calendarcelldelegate.h"

/// Draws cells of the year grid, optionally with the day of the week in the corner.
class CalendarDayItemDelegate final : public CalendarCellDelegate
{
    Q_OBJECT

public:
    explicit CalendarDayItemDelegate(QObject *parent = nullptr);

public slots:
    /// The caller repaints the view.
    void setShowDow(bool show);

protected:
    [[nodiscard]] QString cornerText(const QDate &date) const override;

private:
    bool m_showDow = false;
};
