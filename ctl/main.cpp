#include "commands.h"

#include <QCoreApplication>

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("orvexctl"));
    QCoreApplication::setApplicationVersion(QStringLiteral(ORVEX_VERSION));
    return runCommand(QCoreApplication::arguments().mid(1));
}
