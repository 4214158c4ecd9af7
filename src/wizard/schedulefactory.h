#pragma once

#include "objects.h"
#include "schedules.h"

#include <QDate>

class CalendarWizardPage;
class FixedWizardPage;
class FreeWizardPage;
class ShiftWizardPage;

/// Builds new schedule records. Values of wizard pages are not checked: the store checks the record.
namespace scheduleview {

/// A week that starts on the Monday on or before \a today.
[[nodiscard]] orvex::SCHEDULE_DATA fixedSchedule(const FixedWizardPage &page, const QDate &today);
/// A cycle of days. Days with the same intervals share a shift; the shifts are in the order of their first use.
[[nodiscard]] orvex::SCHEDULE_DATA shiftSchedule(const ShiftWizardPage &page);
/// Limits only. The page has no date of its own.
[[nodiscard]] orvex::SCHEDULE_DATA freeSchedule(const FreeWizardPage &page, const QDate &startDate);
/// Without the days: they are stored separately.
[[nodiscard]] orvex::SCHEDULE_DATA calendarSchedule(const CalendarWizardPage &page);
/// A schedule of an employee for the month that starts on \a start, named after both; without the days.
[[nodiscard]] orvex::SCHEDULE_DATA personalSchedule(const orvex::ObjectInfo &employee, const QDate &start,
                                                    const QString &color);

} // namespace scheduleview
