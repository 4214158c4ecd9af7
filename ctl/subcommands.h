#pragma once

#include <QHash>
#include <QStringList>

/// The parsed arguments of one subcommand.
struct Arguments
{
    QStringList positional;
    QHash<QString, QString> options; ///< values by option name
};

/// Runs a subcommand, `--help` or `--version` and gives the exit code. \a arguments: without the program's name.
[[nodiscard]] int runSubcommand(const QStringList &arguments);
