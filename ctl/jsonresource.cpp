#include "jsonresource.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>

namespace jsonresource {

QJsonObject read(const QString &name)
{
    QFile file(QStringLiteral(":/sample/") + name);
    if (!file.open(QIODevice::ReadOnly))
        qFatal("%s is not part of this program", qPrintable(name));
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
