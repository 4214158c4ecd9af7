#include "bench_panel.h"

#include "panelinfowidget.h"
#include "benchguide.h"

#include <QAbstractTextDocumentLayout>
#include <QCoreApplication>
#include <QTextDocument>
#include <QTextEdit>

#include <memory>

namespace {

constexpr int Rounds = 41;
constexpr int Hour = 3600;
const QSize PanelSize(370, 600);

orvex::SCHEDULE_DATA schedule(orvex::ScheduleMode type, int days = 0)
{
    orvex::SCHEDULE_DATA record;
    record.id = 1;
    record.name = QStringLiteral("Пятидневка с короткой пятницей");
    record.type = type;
    record.startDate = QDate(2026, 1, 1);
    for (int i = 0; i < 10; ++i)
        record.shifts.append({-1, 0, {{-1, (6 + i) * Hour, (10 + i) * Hour}, {-1, (11 + i) * Hour, (15 + i) * Hour}}});
    for (int i = 0; i < days; ++i)
        record.days.append({-1, i % 10, -1, i % 7 > 4});
    return record;
}

/// The time of one layout of the same text in the same width, with its fonts already loaded.
double layoutTime(const QTextEdit &text)
{
    const std::unique_ptr<QTextDocument> copy(text.document()->clone());
    copy->setUndoRedoEnabled(false);
    const int width = text.viewport()->width();
    return bench::milliseconds([&copy, width] {
        copy->setTextWidth(width);
        if (copy->documentLayout()->documentSize().isEmpty())
            qFatal("the copied text has no size");
    });
}

/// Measures from the selection to the painted text, with a short text of another schedule before. \a days: of a
/// schedule whose text needs them; they are set last.
void measure(bench::Report &report, const QString &name, const orvex::SCHEDULE_DATA &record,
             const QList<orvex::SCHEDULE_CALENDAR_DAY> &days = {})
{
    PanelInfoWidget panel;
    panel.resize(PanelSize);
    panel.show();
    QCoreApplication::processEvents();
    const auto text = panel.findChild<QTextEdit *>(QStringLiteral("textEdit"));
    auto other = schedule(orvex::ScheduleFree);
    other.id = 2;
    QVector<double> shown;
    QVector<double> laidOut;
    QVector<double> painted;
    for (int round = 0; round < Rounds; ++round) {
        panel.updateInfo(other);
        QCoreApplication::processEvents();
        if (!days.isEmpty())
            panel.updateInfo(record);
        shown.append(bench::milliseconds([&] {
            if (days.isEmpty())
                panel.updateInfo(record);
            else
                panel.setCalendarDays(record.id, days);
            QCoreApplication::processEvents();
        }));
        laidOut.append(layoutTime(*text));
        painted.append(bench::milliseconds([text] { text->viewport()->repaint(); }));
    }
    const double time = bench::tenthPercentile(shown);
    report.add(QStringLiteral("panel: %1").arg(name), time, QStringLiteral("ms"));
    const double layout = bench::tenthPercentile(laidOut);
    report.atMost(QStringLiteral("… against one layout of the finished text"), time / layout, 1.3);
    report.add(QStringLiteral("… against that layout and one painting"),
               time / (layout + bench::tenthPercentile(painted)));
}

} // namespace

namespace bench {

void benchPanel(Report &report)
{
    fillGuide();
    measure(report, QStringLiteral("a fixed schedule"), schedule(orvex::ScheduleFixed, 7));
    measure(report, QStringLiteral("a calendar schedule"), schedule(orvex::ScheduleCalendar),
            workingDays(QDate::currentDate().year(), QDate::currentDate().year()));
    measure(report, QStringLiteral("a cycle of 99 days"), schedule(orvex::ScheduleShift, 99));
    measure(report, QStringLiteral("a cycle of 365 days"), schedule(orvex::ScheduleShift, 365));
}

} // namespace bench
