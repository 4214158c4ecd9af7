#pragma once

#include <QHash>
#include <QString>
#include <QStringList>

#include <cstdio>

/// How the program ends.
enum ExitCode : int
{
    ExitDone = 0,
    ExitRefused = 1, ///< it could not be done, and nothing was changed
    ExitUsage = 2, ///< the command line is not understood
};

/// The arguments of one subcommand, understood.
struct Arguments
{
    QStringList positional;
    QHash<QString, QString> options;
};

namespace terminal {

/// Writes a line.
void print(FILE *to, const QString &text);
/// Tells what was done.
int done(const QString &text);
/// Tells why nothing was done.
int refused(const QString &text);

} // namespace terminal
