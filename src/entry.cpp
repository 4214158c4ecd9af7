#include <QtPlugin>

// The view is in a static library, so moc generates the entry points of a static plug-in. These functions export them
// under the names that `QPluginLoader` looks up.
extern const QStaticPlugin qt_static_plugin_ScheduleView();

extern "C" Q_DECL_EXPORT const char *qt_plugin_query_metadata();
extern "C" Q_DECL_EXPORT QObject *qt_plugin_instance();

const char *qt_plugin_query_metadata()
{
    return qt_static_plugin_ScheduleView().rawMetaData();
}

QObject *qt_plugin_instance()
{
    return qt_static_plugin_ScheduleView().instance();
}
