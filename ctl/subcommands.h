#pragma once

#include <QStringList>

/// Runs a subcommand, `--help` or `--version` and gives the exit code. \a arguments: without the program's name.
[[nodiscard]] int runSubcommand(const QStringList &arguments);
