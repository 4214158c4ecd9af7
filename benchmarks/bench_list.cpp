#include "bench_list.h"

#include "cache.h"
#include "localstorage.h"
#include "people.h"
#include "qtlist.h"
#include "repainter.h"
#include "scheduleview.h"
#include "searchwidget.h"
#include "storagechange.h"
#include "tqglobals.h"
#include "tqserverinterface.h"

#include <QCoreApplication>
#include <QLocale>
#include <QRandomGenerator>
#include <QTableView>

#include <malloc.h>

#include <algorithm>

namespace {

using orvex::LocalStorage;
using orvex::SCHEDULE_DATA;

constexpr int Rounds = 5;
constexpr int Months = 12;

/// The numbers of employees, each with a personal schedule for every month of a year, and of common schedules.
struct Organisation
{
    quint32 employees;
    quint32 common;
};
constexpr Organisation Large{10'000, 1'000};
constexpr Organisation Small{900, 200};
constexpr Organisation Huge{83'000, 4'000};

int sizeOf(const Organisation &organisation)
{
    return int(organisation.employees) * Months + int(organisation.common);
}

SCHEDULE_DATA commonSchedule(QRandomGenerator &random, int id)
{
    static const QStringList kinds =
        QStringLiteral("Пятидневка Сменный Дежурство Склад Цех Охрана Смена Бригада Участок").split(QLatin1Char(' '));
    SCHEDULE_DATA schedule;
    schedule.id = id;
    schedule.state = orvex::ScheduleStateActive;
    schedule.type = orvex::ScheduleMode(random.bounded(4));
    schedule.name = QStringLiteral("%1 №%2").arg(kinds.at(int(random.bounded(quint32(kinds.size()))))).arg(id);
    schedule.color = QColor::fromRgb(random.generate()).name();
    return schedule;
}

void fillStorage(const Organisation &organisation)
{
    QRandomGenerator random(7);
    People people;
    const QLocale russian(QLocale::Russian);
    orvex::StorageChange change;
    change.full = true;
    auto &employees = change.objects[orvex::SUBJECT_DATANAME];
    int id = 0;
    for (quint32 i = 0; i < organisation.common; ++i) {
        ++id;
        change.schedules.insert(quint32(id), commonSchedule(random, id));
    }
    for (quint32 employee = 1; employee <= organisation.employees; ++employee) {
        const QString name = people.next(random).name;
        employees.insert(employee,
                         {db::orgstructure::WORKER,
                          employee,
                          {{db::param::NAME, name},
                           {db::param::WORKERNUM, QStringLiteral("%1").arg(employee, 6, 10, QLatin1Char('0'))}}});
        for (int month = 1; month <= Months; ++month) {
            SCHEDULE_DATA schedule;
            schedule.id = ++id;
            schedule.state = orvex::ScheduleStateActive;
            schedule.type = orvex::SchedulePersonal;
            schedule.name = QStringLiteral("%1 %2 2025").arg(name, russian.standaloneMonthName(month));
            schedule.startDate = QDate(2025, month, 1);
            schedule.workerId = employee;
            change.schedules.insert(quint32(id), schedule);
        }
    }
    bench::fillCache(change);
}

/// The page itself, as the client shows it.
class Page
{
public:
    Page()
        : m_repainter(&m_view)
    {
        m_view.init(&m_server, QStringLiteral("scheduleview"));
        m_view.resize(bench::ListWindowSize);
        m_view.show();
        QCoreApplication::processEvents();
    }

    void open()
    {
        m_view.insertedToInterface();
        m_table = m_view.findChild<QTableView *>(QStringLiteral("scheduleView"));
        m_search = m_view.findChild<SearchWidget *>();
        m_table->viewport()->installEventFilter(&m_repainter);
        paint();
    }

    void showTab(int tab)
    {
        m_view.onTabActivated(tab);
        paint();
    }

    void filter(const QString &text)
    {
        m_search->setText(text);
        paint();
    }

    void paint() { m_repainter.repaint(m_table->viewport()); }

    [[nodiscard]] int rowCount() const { return m_table->model()->rowCount(); }

private:
    TQServerInterface m_server;
    ScheduleView m_view;
    bench::Repainter m_repainter;
    QTableView *m_table = nullptr;
    SearchWidget *m_search = nullptr;
};

QVector<QString> foldedNames(bool personalOnly)
{
    QVector<QString> names;
    const auto schedules = LocalStorage::instance()->schedules();
    for (const auto &schedule : schedules) {
        if (!personalOnly || schedule.type == orvex::SchedulePersonal)
            names.append(schedule.name.toCaseFolded());
    }
    return names;
}

/// The least time for a sorted list of the records: a copy of them, and one sort of their folded names.
double copyAndSort(QVector<QString> names)
{
    names.detach();
    return bench::milliseconds([&names] {
        const auto schedules = LocalStorage::instance()->schedules();
        const std::vector<SCHEDULE_DATA> copy(schedules.cbegin(), schedules.cend());
        std::sort(names.begin(), names.end());
        if (copy.size() < 2 || names.constLast() < names.constFirst())
            qFatal("the names are not sorted");
    });
}

double showBothTabs(Page &page)
{
    return bench::milliseconds([&page] {
        page.open();
        page.showTab(1);
    });
}

double showBothTabs(bench::QtList &list)
{
    return bench::milliseconds([&list] {
        list.open();
        list.showPersonal();
    });
}

void measureStart(bench::Report &report, QAbstractItemModel *filled)
{
    QVector<double> qtRatios;
    QVector<double> bareRatios;
    QVector<double> times;
    const auto names = foldedNames(false);
    for (int round = 0; round < Rounds; ++round) {
        Page page;
        const double own = showBothTabs(page);
        const double bare = copyAndSort(names);
        bench::QtList list(filled);
        const double qt = showBothTabs(list);
        if (page.rowCount() != list.rowCount())
            qFatal("the two lists show different rows: %d and %d", page.rowCount(), list.rowCount());
        times.append(own);
        bareRatios.append(own / bare);
        qtRatios.append(qt / own);
    }
    report.atLeast(QStringLiteral("Schedule list, 121,000: both tabs painted, times faster than Qt's own models"),
                   bench::median(qtRatios), 15);
    report.atMost(QStringLiteral("  the same / bare copy of the records and one sort of their names"),
                  bench::median(bareRatios), 3);
    report.add(QStringLiteral("  from the storage to both tabs painted"), bench::median(times), QStringLiteral("ms"));
}

/// A change of \a count personal schedules that moves each of them in the list, forward or back by \a round.
orvex::StorageChange reordering(int count, int round)
{
    orvex::StorageChange change;
    const auto schedules = LocalStorage::instance()->schedules();
    const int first = int(Large.common) + 1;
    const int step = (schedules.size() - first) / count;
    for (int i = 0; i < count; ++i) {
        auto schedule = schedules.value(quint32(first + i * step));
        schedule.startDate = schedule.startDate.addMonths(round % 2 == 0 ? 5 : -5);
        schedule.name = QString(QChar(ushort(0x0410 + (i + round) % 32))) + schedule.name.mid(1);
        ++schedule.version;
        change.schedules.insert(quint32(schedule.id), schedule);
    }
    return change;
}

void measureNotifications(bench::Report &report, Page &page)
{
    const QVector<QPair<int, double>> goals{{1, 2}, {100, 20}, {10'000, 30}};
    for (const auto &[count, goal] : goals) {
        QVector<double> ratios;
        QVector<double> times;
        for (int round = 0; round < Rounds * 4; ++round) {
            const auto change = reordering(count, round);
            const double notification = bench::milliseconds([&] {
                LocalStorage::instance()->apply(change);
                page.paint();
            });
            const double paint = bench::milliseconds([&page] { page.paint(); });
            ratios.append(notification / paint);
            times.append(notification);
        }
        report.atMost(QStringLiteral("Notification of %L1 changes that re-order, painted / bare repaint").arg(count),
                      bench::median(ratios), goal);
        report.add(QStringLiteral("  the same"), bench::median(times), QStringLiteral("ms"));
    }
}

template <class List> double typeText(List &list, const QString &text)
{
    list.filter({});
    return bench::milliseconds([&] {
        for (int length = 1; length <= text.size(); ++length)
            list.filter(text.left(length));
    });
}

void measureFilter(bench::Report &report, Page &page, QAbstractItemModel *filled)
{
    const QString text = QStringLiteral("Иванов Алекс");
    const auto names = foldedNames(true);
    bench::QtList list(filled);
    (void)showBothTabs(list);
    QVector<double> qtRatios;
    QVector<double> bareRatios;
    QVector<double> times;
    for (int round = 0; round < Rounds; ++round) {
        const double own = typeText(page, text);
        const int rows = page.rowCount();
        int found = 0;
        const double bare = bench::milliseconds([&] {
            for (int length = 1; length <= text.size(); ++length) {
                const QString folded = text.left(length).toCaseFolded();
                found = int(std::count_if(names.cbegin(), names.cend(),
                                          [&folded](const QString &name) { return name.contains(folded); }));
            }
        });
        const double qt = typeText(list, text);
        if (rows != found || list.rowCount() != found)
            qFatal("the filters disagree: %d, %d and %d rows", rows, list.rowCount(), found);
        times.append(own / text.size());
        bareRatios.append(own / bare);
        qtRatios.append(qt / own);
    }
    page.filter({});
    report.atLeast(QStringLiteral("Twelve filter keystrokes, painted, times faster than Qt's own proxy"),
                   bench::median(qtRatios), 20);
    report.atMost(QStringLiteral("  the same / `contains` on every folded name"), bench::median(bareRatios), 5);
    report.add(QStringLiteral("  one keystroke, painted, on average"), bench::median(times), QStringLiteral("ms"));
}

std::size_t allocated()
{
    const auto info = mallinfo2();
    return info.uordblks + info.hblkhd;
}

void measureMemory(bench::Report &report)
{
    const auto schedules = LocalStorage::instance()->schedules();
    const std::size_t atFirst = allocated();
    const std::vector<SCHEDULE_DATA> copy(schedules.cbegin(), schedules.cend());
    const double plain = double(allocated() - atFirst) / schedules.size();
    Page page;
    QCoreApplication::processEvents();
    const std::size_t before = allocated();
    page.open();
    page.showTab(1);
    const double own = double(allocated() - before) / schedules.size();
    report.add(QStringLiteral("Memory per schedule, list and second tab open / plain copy of the records"),
               own / plain);
    report.add(QStringLiteral("  the same"), own, QStringLiteral("bytes"));
    report.add(QStringLiteral("  plain copy"), plain, QStringLiteral("bytes"));
}

void measureGrowth(bench::Report &report)
{
    QVector<double> times;
    for (const auto &organisation : {Small, Large, Huge}) {
        fillStorage(organisation);
        QVector<double> rounds;
        for (int round = 0; round < Rounds; ++round) {
            Page page;
            rounds.append(showBothTabs(page));
        }
        times.append(bench::median(rounds));
        report.add(QStringLiteral("Both tabs painted of %L1 schedules").arg(sizeOf(organisation)), times.constLast(),
                   QStringLiteral("ms"));
    }
    report.add(QStringLiteral("  growth from %L1 to %L2, which is %3 times as many")
                   .arg(sizeOf(Small))
                   .arg(sizeOf(Huge))
                   .arg(double(sizeOf(Huge)) / sizeOf(Small), 0, 'f', 0),
               times.constLast() / times.constFirst());
}

} // namespace

namespace bench {

void benchList(Report &report)
{
    QLocale::setDefault(QLocale(QLocale::Russian, QLocale::Russia));
    fillStorage(Large);
    const auto filled = standardModel();
    {
        Page warmUp;
        (void)showBothTabs(warmUp);
    }
    measureStart(report, filled.get());
    {
        Page page;
        (void)showBothTabs(page);
        measureFilter(report, page, filled.get());
        measureNotifications(report, page);
    }
    measureMemory(report);
    measureGrowth(report);
}

} // namespace bench
