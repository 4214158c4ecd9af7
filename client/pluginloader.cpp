#include "pluginloader.h"

#include "tqplugininterface.h"

#include <QDir>
#include <QLibrary>
#include <QPluginLoader>

#include <algorithm>

void PluginLoader::load(const QString &folder)
{
    const auto files = QDir(folder).entryInfoList(QDir::Files, QDir::Name);
    for (const QFileInfo &file : files) {
        if (QLibrary::isLibrary(file.fileName()))
            loadLibrary(file.absoluteFilePath());
    }
    sortByRequirements();
}

void PluginLoader::loadLibrary(const QString &path)
{
    const QString file = QFileInfo(path).fileName();
    const auto fail = [this, &file](const QString &reason) { m_failures.append({file, reason}); };

    QPluginLoader loader(path);
    if (loader.metaData().value(QStringLiteral("IID")).toString().isEmpty()) {
        fail(tr("Файл повреждён, собран для другой версии или не является модулем клиента."));
        return;
    }
    Plugin plugin;
    plugin.file = file;
    QObject *root = nullptr;
    const QString failure = failureOf([&] {
        root = loader.instance();
        plugin.object = dynamic_cast<TQPluginInterface *>(root);
        if (!plugin.object)
            return;
        plugin.name = plugin.object->pluginName();
        plugin.required = plugin.object->requireList();
    });
    const auto sameName = [&plugin](const Plugin &other) { return other.name == plugin.name; };
    if (!failure.isEmpty())
        fail(failure);
    else if (!root)
        fail(tr("Библиотеку нельзя загрузить: %1").arg(loader.errorString()));
    else if (!plugin.object)
        fail(tr("Библиотека не является модулем этого клиента."));
    else if (std::any_of(m_plugins.cbegin(), m_plugins.cend(), sameName))
        fail(tr("Модуль с именем «%1» уже загружен из другого файла.").arg(plugin.name));
    else
        m_plugins.append(plugin);
}

void PluginLoader::sortByRequirements()
{
    QList<Plugin> waiting = m_plugins;
    m_plugins.clear();
    QStringList sorted;
    const auto isReady = [&sorted](const Plugin &plugin) {
        const auto isSorted = [&sorted](const QString &name) { return sorted.contains(name); };
        return std::all_of(plugin.required.cbegin(), plugin.required.cend(), isSorted);
    };
    for (;;) {
        const auto next = std::find_if(waiting.begin(), waiting.end(), isReady);
        if (next == waiting.end())
            break;
        sorted.append(next->name);
        m_plugins.append(*next);
        waiting.erase(next);
    }
    for (const Plugin &plugin : qAsConst(waiting)) {
        QStringList missing;
        for (const QString &name : plugin.required) {
            if (!sorted.contains(name))
                missing.append(name);
        }
        m_failures.append({plugin.file,
                           tr("Модуль «%1» требует модуль, который не загружен: %2.")
                               .arg(plugin.name, missing.join(QStringLiteral(", ")))});
    }
}
