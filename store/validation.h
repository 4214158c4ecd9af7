#pragma once

#include "calendardays.h"
#include "schedules.h"

#include <QCoreApplication>

namespace store {

/// The rules that a record of a request must satisfy by itself. A day of the work mode may be neither off nor have a
/// shift, because editors can produce such a day.
class Validation
{
    Q_DECLARE_TR_FUNCTIONS(store::Validation)

public:
    /// The first fault of the record, in whole sentences for the operator; empty if there is none.
    [[nodiscard]] static QString fault(const orvex::SCHEDULE_DATA &schedule);
    /// The first fault of a calendar day.
    [[nodiscard]] static QString fault(const orvex::SCHEDULE_CALENDAR_DAY &day);
};

} // namespace store
