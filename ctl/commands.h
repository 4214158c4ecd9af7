#pragma once

#include <QStringList>

/// How the program ends.
enum ExitCode : int
{
    ExitDone = 0,
    ExitRefused = 1, ///< it could not be done, and nothing was changed
    ExitUsage = 2, ///< the command line is not understood
};

/// Runs \a arguments (without the program's name): a subcommand, `--help` or `--version`.
[[nodiscard]] int runCommand(const QStringList &arguments);
