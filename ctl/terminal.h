#pragma once

#include <QCoreApplication>
#include <QString>

#include <cstdio>

/// How the program ends.
enum ExitCode : int
{
    ExitDone = 0,
    ExitRefused = 1, ///< it could not be done, or a check has found something; the text says what was left behind
    ExitUsage = 2, ///< the command line is not understood
};

/// The translation context of every text of this program.
struct Text
{
    Q_DECLARE_TR_FUNCTIONS(orvexctl)
};

namespace terminal {

/// Writes a line.
void print(FILE *to, const QString &text);
/// Tells what was done.
int done(const QString &text);
/// Tells why it was not done.
int refused(const QString &text);

} // namespace terminal
