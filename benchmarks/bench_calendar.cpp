#include "bench_calendar.h"

#include "calendaryearwidget.h"
#include "benchguide.h"

#include <QCoreApplication>
#include <QHeaderView>
#include <QPainter>
#include <QSlider>
#include <QSpinBox>
#include <QTableWidget>

#include <algorithm>
#include <functional>
#include <memory>

namespace {

using Days = QList<orvex::SCHEDULE_CALENDAR_DAY>;

constexpr int Year = 2026;
constexpr int Scale = 4;
constexpr int FirstDayColumn = 2;
constexpr int Rounds = 201;
const QSize GridSize(1920, 1080);

QTableView *gridOf(const QWidget &calendar)
{
    return calendar.findChild<QTableView *>(QStringLiteral("calendarView"));
}

std::unique_ptr<CalendarYearWidget> calendarOf(const Days &days)
{
    auto calendar = std::make_unique<CalendarYearWidget>();
    calendar->findChild<QSpinBox *>(QStringLiteral("sbYear"))->setValue(Year);
    calendar->findChild<QSlider *>(QStringLiteral("hsScale"))->setValue(Scale);
    calendar->setDays(days);
    calendar->setColor(QStringLiteral("#7bc67e"));
    calendar->resize(GridSize);
    calendar->show();
    QCoreApplication::processEvents();
    return calendar;
}

QColor tintOf(const QModelIndex &index)
{
    const QVariant background = index.data(Qt::BackgroundRole);
    return background.isValid() ? background.value<QBrush>().color() : QColor();
}

/// Paints the same cells from a list of their rectangles, colours and texts.
class BareGrid : public QWidget
{
public:
    explicit BareGrid(const QTableView &grid)
    {
        setAttribute(Qt::WA_OpaquePaintEvent);
        resize(grid.viewport()->size());
        const auto model = grid.model();
        for (int row = 0; row < model->rowCount(); ++row) {
            for (int column = 0; column < model->columnCount(); ++column) {
                const QModelIndex index = model->index(row, column);
                const auto alignment = column < FirstDayColumn ? Qt::AlignVCenter | Qt::AlignLeft : Qt::AlignCenter;
                m_cells.append({grid.visualRect(index), tintOf(index), index.data().toString(), alignment});
            }
        }
    }

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        painter.fillRect(rect(), palette().color(QPalette::Base));
        for (const Cell &cell : m_cells) {
            if (cell.tint.isValid())
                painter.fillRect(cell.rect, cell.tint);
            if (!cell.text.isEmpty())
                painter.drawText(cell.rect, int(cell.alignment), cell.text);
        }
        const QRect last = m_cells.last().rect;
        for (const Cell &cell : m_cells) {
            if (cell.rect.left() == m_cells.first().rect.left())
                painter.fillRect(0, cell.rect.bottom() + 1, last.right() + 1, 1, Qt::lightGray);
            if (cell.rect.top() == m_cells.first().rect.top())
                painter.fillRect(cell.rect.right() + 1, 0, 1, last.bottom() + 1, Qt::lightGray);
        }
    }

private:
    struct Cell
    {
        QRect rect;
        QColor tint;
        QString text;
        Qt::Alignment alignment;
    };
    QVector<Cell> m_cells;
};

/// The same cells as items of a `QTableWidget`.
std::unique_ptr<QTableWidget> tableOf(const QTableView &grid)
{
    const auto model = grid.model();
    auto table = std::make_unique<QTableWidget>(model->rowCount(), model->columnCount());
    table->verticalHeader()->hide();
    for (int row = 0; row < model->rowCount(); ++row) {
        table->setRowHeight(row, grid.rowHeight(row));
        for (int column = 0; column < model->columnCount(); ++column) {
            const QModelIndex index = model->index(row, column);
            auto item = new QTableWidgetItem(index.data().toString());
            item->setTextAlignment(Qt::AlignCenter);
            if (const QColor tint = tintOf(index); tint.isValid())
                item->setBackground(tint);
            table->setItem(row, column, item);
            table->setColumnWidth(column, grid.columnWidth(column));
        }
    }
    table->resize(grid.size());
    table->show();
    QCoreApplication::processEvents();
    return table;
}

/// Measures the operations alternately, so that other load affects all of them alike.
QVector<double> measureAlternately(const QVector<std::function<void()>> &operations)
{
    QVector<QVector<double>> times(operations.size());
    for (int round = 0; round < Rounds; ++round) {
        for (int i = 0; i < operations.size(); ++i)
            times[i].append(bench::milliseconds(operations.at(i)));
    }
    QVector<double> results;
    for (const auto &each : times)
        results.append(bench::tenthPercentile(each));
    return results;
}

void benchRepaint(bench::Report &report)
{
    const auto calendar = calendarOf(bench::workingDays(Year, Year));
    const auto tenYears = calendarOf(bench::workingDays(Year - 5, Year + 4));
    QTableView *const grid = gridOf(*calendar);
    QTableView *const longGrid = gridOf(*tenYears);
    BareGrid bare(*grid);
    bare.show();
    const auto table = tableOf(*grid);
    const auto times =
        measureAlternately({[grid] { grid->viewport()->repaint(); }, [longGrid] { longGrid->viewport()->repaint(); },
                            [&table] { table->viewport()->repaint(); }, [&bare] { bare.repaint(); }});
    report.add(QStringLiteral("year grid: a repaint"), times.at(0), QStringLiteral("ms"));
    report.atMost(QStringLiteral("… against a table widget with fixed texts"), times.at(0) / times.at(2), 0.3);
    report.atMost(QStringLiteral("… against a painter that draws the same cells"), times.at(0) / times.at(3), 1.3);
    report.atMost(QStringLiteral("… with ten years of days against one"), times.at(1) / times.at(0), 1.05);
}

/// Measures from the call to the painted result, without the preparation of a round.
void benchPattern(bench::Report &report)
{
    const QDate first(Year, 1, 1);
    const auto calendar = calendarOf({});
    QTableView *const grid = gridOf(*calendar);
    const Days oneDay = bench::workingDays(Year, Year).mid(0, 1);
    QVector<double> patterns;
    QVector<double> repaints;
    for (int round = 0; round < Rounds; ++round) {
        calendar->setDays(oneDay);
        grid->selectionModel()->select(grid->model()->index(0, FirstDayColumn), QItemSelectionModel::ClearAndSelect);
        QCoreApplication::processEvents();
        patterns.append(bench::milliseconds([&calendar] {
            calendar->applyYearPeriodic();
            QCoreApplication::processEvents();
        }));
        if (calendar->days().size() != first.daysInYear())
            qFatal("the pattern did not reach the end of the year");
        repaints.append(bench::milliseconds([grid] {
            grid->viewport()->update();
            QCoreApplication::processEvents();
        }));
    }
    report.atMost(QStringLiteral("year grid: a pattern over 364 days, painted, against a repaint"),
                  bench::tenthPercentile(patterns) / bench::tenthPercentile(repaints), 1.2);
}

} // namespace

namespace bench {

void benchCalendar(Report &report)
{
    fillGuide();
    benchRepaint(report);
    benchPattern(report);
}

} // namespace bench
