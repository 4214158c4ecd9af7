#pragma once

namespace scheduleview {

/// The signed-in user's rights to schedules. Every call reads them again.
class RoleContainer
{
public:
    RoleContainer() = default;

    [[nodiscard]] static bool canShow();
    [[nodiscard]] static bool canCreate();
    [[nodiscard]] static bool canUpdate();
    [[nodiscard]] static bool canDelete();
};

} // namespace scheduleview
