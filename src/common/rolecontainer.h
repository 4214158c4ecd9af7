#pragma once

namespace scheduleview {

/// What the signed-in user may do with schedules, asked afresh at every call.
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
