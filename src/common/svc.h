#pragma once

class QLoggingCategory;

/// The plug-in's logging category, "gui.plugin.scheduleview".
QLoggingCategory &svc();
