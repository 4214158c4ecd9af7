#include "commands.h"

#include <QCoreApplication>
#include <QTextCodec>

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    // File names and texts are UTF-8, whatever the locale of the job that runs this program.
    QTextCodec::setCodecForLocale(QTextCodec::codecForName("UTF-8"));
    QCoreApplication::setApplicationName(QStringLiteral("orvexctl"));
    QCoreApplication::setApplicationVersion(QStringLiteral(ORVEX_VERSION));
    return runCommand(QCoreApplication::arguments().mid(1));
}
