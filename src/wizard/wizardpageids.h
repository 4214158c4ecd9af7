#pragma once

// The page identifiers of both wizards.

namespace schedulewizard {

enum PageId
{
    TypePageId,
    FixedPageId,
    ShiftPageId,
    FreePageId,
    CalendarPageId,
    FinishPageId
};

} // namespace schedulewizard

namespace personalwizard {

enum PageId
{
    EmployeePageId,
    CalendarPageId,
    FinishPageId
};

} // namespace personalwizard
