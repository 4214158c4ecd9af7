#include "terminal.h"

#include <QTextStream>

namespace terminal {

void print(FILE *to, const QString &text)
{
    QTextStream stream(to);
    stream << text << '\n';
}

int done(const QString &text)
{
    print(stdout, text);
    return ExitDone;
}

int refused(const QString &text)
{
    print(stderr, text);
    return ExitRefused;
}

int finish(const store::Outcome &outcome, const QString &success)
{
    return outcome.ok() ? done(success) : refused(outcome.message());
}

} // namespace terminal
