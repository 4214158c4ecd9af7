#include "bench_calendar.h"
#include "bench_feed.h"
#include "bench_list.h"
#include "bench_panel.h"
#include "bench_store.h"
#include "bench_tree.h"
#include "report.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QSettings>
#include <QTemporaryDir>
#include <QTextStream>

int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    QCommandLineParser parser;
    parser.addHelpOption();
    const QCommandLineOption json(QStringLiteral("json"), QStringLiteral("Write the figures to <file>."),
                                  QStringLiteral("file"));
    const QCommandLineOption only(QStringLiteral("only"), QStringLiteral("Run one set of measurements."),
                                  QStringLiteral("name"));
    QCommandLineOption feedWriter(QStringLiteral("feed-writer"), {}, QStringLiteral("file"));
    feedWriter.setFlags(QCommandLineOption::HiddenFromHelp);
    parser.addOptions({json, only, feedWriter});
    parser.process(application);
    if (parser.isSet(feedWriter))
        return bench::runFeedWriter(parser.value(feedWriter));

    // Widgets that save their state must not change the user's settings.
    const QTemporaryDir settings;
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, settings.path());

    const QVector<QPair<QString, bench::Measurement>> sets{
        {QStringLiteral("requests"), bench::benchRequests}, {QStringLiteral("loading"), bench::benchLoading},
        {QStringLiteral("feed"), bench::benchFeed},         {QStringLiteral("panel"), bench::benchPanel},
        {QStringLiteral("tree"), bench::benchTree},         {QStringLiteral("list"), bench::benchList},
        {QStringLiteral("calendar"), bench::benchCalendar},
    };
    bench::Report report;
    for (const auto &[name, measure] : sets) {
        if (parser.value(only).isEmpty() || parser.value(only) == name)
            measure(report);
    }
    QTextStream(stdout) << report.table();
    if (parser.isSet(json) && !report.save(parser.value(json))) {
        QTextStream(stderr) << "Cannot write " << parser.value(json) << '\n';
        return 1;
    }
    return 0;
}
