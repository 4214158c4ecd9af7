#pragma once

#include <QString>
#include <QStringList>

/// The SQL files.
namespace store::sqlfiles {

/// The statement \a name: from the engine's own file if there is one, otherwise from the common file. `{{other}}` in it
/// is replaced by the statement `other`.
[[nodiscard]] QString statement(const QString &engine, const QString &name);

/// The number of the newest schema that this program knows.
[[nodiscard]] int schemaVersion(const QString &engine);

/// The statements of the step from the previous schema to \a version.
[[nodiscard]] QStringList schemaStep(const QString &engine, int version);

} // namespace store::sqlfiles
