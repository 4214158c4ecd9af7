#pragma once

#include <QStringList>

class QWidget;

namespace scheduleview {

/// Asks the operator whether to delete the schedules with these names. False if \a page was destroyed meanwhile.
[[nodiscard]] bool confirmDeletion(QWidget *page, const QStringList &names);

} // namespace scheduleview
