#pragma once

#include <QJsonObject>
#include <QStringList>

/// The sample's data that are part of this program, as JSON.
namespace jsonresource {

/// The object in the resource `:/sample/NAME`.
[[nodiscard]] QJsonObject read(const QString &name);
/// The texts of an array; empty for anything else.
[[nodiscard]] QStringList strings(const QJsonValue &value);

} // namespace jsonresource
