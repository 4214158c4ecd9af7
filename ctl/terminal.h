#pragma once

#include "outcome.h"

#include <QCoreApplication>
#include <QString>

#include <cstdio>

enum ExitCode : int
{
    ExitDone = 0,
    ExitRefused = 1, ///< the operation failed or a check found faults; the text says what remains on disk
    ExitUsage = 2, ///< the command line is invalid
};

/// The translation context of every text of this program.
struct Text
{
    Q_DECLARE_TR_FUNCTIONS(orvexctl)
};

namespace terminal {

/// Writes a line.
void print(FILE *to, const QString &text);
/// Prints to the standard output and returns `ExitDone`.
int done(const QString &text);
/// Prints to the standard error output and returns `ExitRefused`.
int refused(const QString &text);
/// Prints \a success or the message of a failed \a outcome and returns the exit code.
int finish(const store::Outcome &outcome, const QString &success);

} // namespace terminal
