#include <QtPlugin>

// The entry that `QPluginLoader` looks for. The class list is a static library, so moc has given it the entry of a
// static plug-in; this library hands it out under the names of a loadable one.
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
