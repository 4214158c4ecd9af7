#pragma once

class CalendarDayList;
class QTextDocument;

namespace orvex {
struct SCHEDULE_DATA;
}

/// What the information panel tells about one schedule.
namespace scheduledescription {

/// Writes the description into an empty document; nothing for a type that is not known. \a days are the schedule's
/// calendar days as far as they are at hand.
void write(QTextDocument *document, const orvex::SCHEDULE_DATA &schedule, const CalendarDayList &days);

/// Pixels that the description will take from top to bottom, roughly: enough to tell whether it fits into a view.
[[nodiscard]] int expectedHeight(const orvex::SCHEDULE_DATA &schedule);

} // namespace scheduledescription
