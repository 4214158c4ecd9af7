#include "sqlfiles.h"

#include "latin1.h"

#include <QFile>
#include <QRegularExpression>

static void initResources()
{
    Q_INIT_RESOURCE(store);
}

namespace store::sqlfiles {

namespace {

constexpr QLatin1String Root = orvex::latin1(":/store/sql/");

QString schemaFile(const QString &engine, int version)
{
    return Root + engine + QStringLiteral("/schema/%1.sql").arg(version, 3, 10, QLatin1Char('0'));
}

QString read(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        qFatal("the SQL file %s is missing", qPrintable(path));
    return QString::fromUtf8(file.readAll()).trimmed();
}

} // namespace

QString statement(const QString &engine, const QString &name)
{
    initResources();
    const QString own = Root + engine + QLatin1Char('/') + name + QStringLiteral(".sql");
    const QString common = Root + QStringLiteral("common/") + name + QStringLiteral(".sql");
    QString text = read(QFile::exists(own) ? own : common);

    static const QRegularExpression fragment(QStringLiteral("\\{\\{(\\w+)\\}\\}"));
    for (auto match = fragment.match(text); match.hasMatch(); match = fragment.match(text))
        text.replace(match.capturedStart(), match.capturedLength(), statement(engine, match.captured(1)));
    return text;
}

int schemaVersion(const QString &engine)
{
    initResources();
    int version = 0;
    while (QFile::exists(schemaFile(engine, version + 1)))
        ++version;
    return version;
}

QStringList schemaStep(const QString &engine, int version)
{
    initResources();
    return read(schemaFile(engine, version)).split(QStringLiteral("\n\n"), Qt::SkipEmptyParts);
}

} // namespace store::sqlfiles
