#pragma once

#include "calendardays.h"
#include "schedules.h"

#include <QCoreApplication>

namespace store {

/// What a record of a request must be to be stored, as far as the record itself tells. A day of the work mode may be
/// neither off nor carry a shift: an editor can make such a day.
class Validation
{
    Q_DECLARE_TR_FUNCTIONS(store::Validation)

public:
    /// Says what is wrong, in whole sentences for the operator; empty for nothing.
    [[nodiscard]] static QString fault(const orvex::SCHEDULE_DATA &schedule);
    /// The same of a calendar day.
    [[nodiscard]] static QString fault(const orvex::SCHEDULE_CALENDAR_DAY &day);
};

} // namespace store
