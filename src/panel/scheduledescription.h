#pragma once

class CalendarDayList;
class QTextDocument;

namespace orvex {
struct SCHEDULE_DATA;
}

/// The information panel's description of one schedule.
namespace scheduledescription {

/// Writes the description into an empty document; nothing for an unknown type. \a days are the calendar days of the
/// schedule that are loaded so far.
void write(QTextDocument *document, const orvex::SCHEDULE_DATA &schedule, const CalendarDayList &days);

/// Returns an estimate of the description's height in pixels, precise enough to decide whether it fits into a view.
[[nodiscard]] int expectedHeight(const orvex::SCHEDULE_DATA &schedule);

} // namespace scheduledescription
