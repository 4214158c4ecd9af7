#pragma once

class CalendarDayList;
class DescriptionWriter;

namespace orvex {
struct SCHEDULE_DATA;
}

/// Writes the information panel's description of a personal schedule: the employee and the calendar of the month.
void writePersonalDescription(DescriptionWriter &writer, const orvex::SCHEDULE_DATA &schedule,
                              const CalendarDayList &days);
