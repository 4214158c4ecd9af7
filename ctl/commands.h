#pragma once

#include <QHash>
#include <QStringList>

/// The arguments of one subcommand, understood.
struct Arguments
{
    QStringList positional;
    QHash<QString, QString> options;
};

/// Runs \a arguments (without the program's name): a subcommand, `--help` or `--version`.
[[nodiscard]] int runCommand(const QStringList &arguments);
