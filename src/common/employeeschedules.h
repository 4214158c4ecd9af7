#pragma once

#include "objects.h"

#include <QDate>
#include <QString>

namespace scheduleview {

/// Whether the local storage has a personal schedule of the employee with exactly this start date, in any state.
[[nodiscard]] bool hasPersonalSchedule(quint32 employeeId, const QDate &start);

/// The schedule of an employee for months without a personal one; 0: none. The local storage may not have it.
[[nodiscard]] quint32 mainScheduleId(const orvex::ObjectInfo &employee);
/// The name of that schedule; "<Не назначен>" if there is none in the local storage.
[[nodiscard]] QString mainScheduleName(const orvex::ObjectInfo &employee);

} // namespace scheduleview
