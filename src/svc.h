#pragma once

#include <QLoggingCategory>

/// The plug-in's logging category, "gui.plugin.scheduleview".
const QLoggingCategory &svc();
