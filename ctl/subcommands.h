#pragma once

#include <QStringList>

/// Runs a subcommand, `--help` or `--version` and returns the exit code. \a arguments exclude the program's name.
[[nodiscard]] int runSubcommand(const QStringList &arguments);
