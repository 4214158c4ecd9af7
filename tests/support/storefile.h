#pragma once

#include <QByteArray>
#include <QString>

namespace support {

/// Executes a statement on the file of a store through a connection of its own. Returns the error, empty on success.
[[nodiscard]] QString tryStatement(const QString &file, const QString &statement);
/// The same; ends the program when it fails.
void executeStatement(const QString &file, const QString &statement);

/// Empty when the file cannot be read.
[[nodiscard]] QByteArray contents(const QString &file);

} // namespace support
