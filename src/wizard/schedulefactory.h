#pragma once

#include "schedules.h"

#include <QDate>

class CalendarWizardPage;
class FixedWizardPage;
class FreeWizardPage;
class ShiftWizardPage;

/// New schedule records from the values of the wizard's parameter pages. The values are taken as they are; whether they
/// make a schedule is the store's to judge.
namespace scheduleview {

/// A week of working days that counts from the Monday of \a today's week.
[[nodiscard]] orvex::SCHEDULE_DATA fixedSchedule(const FixedWizardPage &page, const QDate &today);
/// A cycle of days. Days with the same intervals share a shift; shifts stand in the order in which they first appear.
[[nodiscard]] orvex::SCHEDULE_DATA shiftSchedule(const ShiftWizardPage &page);
/// Limits only. The page knows no date; \a startDate is whatever the wizard offers for one.
[[nodiscard]] orvex::SCHEDULE_DATA freeSchedule(const FreeWizardPage &page, const QDate &startDate);
/// The head of a calendar schedule; its days are stored separately.
[[nodiscard]] orvex::SCHEDULE_DATA calendarSchedule(const CalendarWizardPage &page);

} // namespace scheduleview
