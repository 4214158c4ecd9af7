#include "jsonresource.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>

static void initResources()
{
    Q_INIT_RESOURCE(sample);
}

namespace jsonresource {

QJsonObject read(const QString &name)
{
    initResources(); // a static library's resources are not registered by themselves
    QFile file(QStringLiteral(":/sample/") + name);
    if (!file.open(QIODevice::ReadOnly))
        qFatal("the resource %s is missing", qPrintable(name));
    return QJsonDocument::fromJson(file.readAll()).object();
}

QStringList strings(const QJsonValue &value)
{
    QStringList list;
    const QJsonArray texts = value.toArray();
    for (const QJsonValue &text : texts)
        list.append(text.toString());
    return list;
}

} // namespace jsonresource
