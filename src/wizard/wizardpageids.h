#pragma once

// The page identifiers of the wizards. The pages of one wizard refer to each other by them.

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
