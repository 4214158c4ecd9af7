#include "subcommands.h"

#include <QCoreApplication>
#include <QTextCodec>

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    // File names and texts are UTF-8 in any locale; scheduled jobs often run in "C".
    QTextCodec::setCodecForLocale(QTextCodec::codecForName("UTF-8"));
    QCoreApplication::setApplicationName(QStringLiteral("orvexctl"));
    QCoreApplication::setApplicationVersion(QStringLiteral(ORVEX_VERSION));
    return runSubcommand(QCoreApplication::arguments().mid(1));
}
