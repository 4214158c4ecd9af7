#pragma once

#include <QString>
#include <QStringList>

/// The SQL that stands in files.
namespace store::sqlfiles {

/// The statement \a name: the engine's own file if there is one, else the common one. `{{other}}` in it stands for the
/// statement `other`.
[[nodiscard]] QString statement(const QString &engine, const QString &name);

/// How many schema steps this program knows; the number of the newest schema.
[[nodiscard]] int schemaVersion(const QString &engine);

/// The statements of the step that leads to the schema \a version.
[[nodiscard]] QStringList schemaStep(const QString &engine, int version);

} // namespace store::sqlfiles
