#pragma once

#include <QStringList>

/// Runs \a arguments (without the program's name): a subcommand, `--help` or `--version`.
[[nodiscard]] int runCommand(const QStringList &arguments);
