#pragma once

#include <QJsonObject>
#include <QStringList>

/// The JSON files of the sample organisation, compiled into the program.
namespace jsonresource {

/// The object in the resource `:/sample/NAME`.
[[nodiscard]] QJsonObject read(const QString &name);
/// The strings of an array; empty for anything else.
[[nodiscard]] QStringList strings(const QJsonValue &value);

} // namespace jsonresource
