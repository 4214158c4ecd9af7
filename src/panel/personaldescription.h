#pragma once

class CalendarDayList;
class DescriptionWriter;

namespace orvex {
struct SCHEDULE_DATA;
}

/// What the information panel tells about a personal schedule: the employee, and the month as a calendar.
void writePersonalDescription(DescriptionWriter &writer, const orvex::SCHEDULE_DATA &schedule,
                              const CalendarDayList &days);
