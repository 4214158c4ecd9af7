#include "bench_tree.h"

#include "cache.h"
#include "localstorage.h"
#include "objecttreemodel.h"
#include "objecttreeproxy.h"
#include "people.h"
#include "storagechange.h"
#include "styleditemdelegate.h"

#include <QRandomGenerator>
#include <QStringList>
#include <QTreeView>

namespace {

constexpr quint32 Departments = 300;
constexpr quint32 Employees = 10'000;
constexpr int Rounds = 15;

orvex::ObjectInfo object(QLatin1String type, quint32 id, const QString &name, quint32 parent)
{
    orvex::ObjectInfo info{type, id, {{db::param::NAME, name}}};
    if (parent != 0)
        info.parameters.insert(db::param::PARENT, QString::number(parent));
    return info;
}

/// Fills the storage. Returns the case-folded names of the employees.
QStringList fillOrganisation()
{
    QRandomGenerator random(1);
    People people;
    orvex::StorageChange change;
    change.full = true;
    orvex::ObjectHash &objects = change.objects[orvex::ORGSTRUCTURE_DATANAME];
    objects.insert(1, object(db::orgstructure::SUBJECTROOT, 1, QStringLiteral("Организация"), 0));
    objects.insert(2, object(db::orgstructure::FIRM, 2, QStringLiteral("Завод"), 1));
    for (quint32 i = 0; i < Departments; ++i)
        objects.insert(3 + i, object(db::orgstructure::DEPARTMENT, 3 + i, QStringLiteral("Цех %1").arg(i), 2));
    QStringList names;
    for (quint32 i = 0; i < Employees; ++i) {
        const quint32 id = 3 + Departments + i;
        const QString name = people.next(random).name;
        auto employee = object(db::orgstructure::WORKER, id, name, 3 + i % Departments);
        employee.parameters.insert(db::param::WORKERNUM, QStringLiteral("%1").arg(i, 6, 10, QLatin1Char('0')));
        objects.insert(id, employee);
        names.append(name.toCaseFolded());
    }
    bench::fillCache(change);
    return names;
}

void setUp(ObjectTreeProxy &proxy, QTreeView &view)
{
    using namespace db::orgstructure;
    proxy.setSourceModel(orvex::LocalStorage::instance()->model(orvex::ORGSTRUCTURE_DATANAME));
    proxy.setSearchIndex(orvex::ORGSTRUCTURE_DATANAME);
    proxy.setSortRole(orvex::ObjectTreeModel::SortRole);
    proxy.setSearchEnabled(true);
    proxy.setReadOnly(true);
    proxy.setTypeFilter({SUBJECTROOT, FIRM, DEPARTMENT, WORKER});
    view.setModel(&proxy);
    view.setItemDelegate(new StyledItemDelegate(&view));
    view.setUniformRowHeights(true);
    view.setHeaderHidden(true);
    view.sortByColumn(0, Qt::AscendingOrder);
    view.hideColumn(1);
    view.resize(500, 600);
    view.show();
    view.grab();
}

/// The time of one pass over all names for each of the texts, as without an index.
double scan(const QStringList &names, const QStringList &texts)
{
    int found = 0;
    const double time = bench::milliseconds([&] {
        for (const QString &text : texts) {
            for (const QString &name : names)
                found += name.contains(text) ? 1 : 0;
        }
    });
    if (found == 0)
        qFatal("the scanned names hold none of the texts");
    return time;
}

double searchTime(ObjectTreeProxy &proxy, const QString &text)
{
    bool found = false;
    const double time = bench::milliseconds([&] {
        proxy.setFilter(text);
        found = proxy.hasFilterResult();
    });
    if (!found)
        qFatal("the tree holds none of the texts");
    return time;
}

/// Milliseconds of all keystrokes: until the branches are found, and until they are expanded and painted.
struct Keystrokes
{
    double search = 0;
    double painted = 0;
};

Keystrokes typeAll(ObjectTreeProxy &proxy, QTreeView &view, const QStringList &texts)
{
    Keystrokes times;
    for (const QString &text : texts) {
        view.collapseAll();
        proxy.setFilter({});
        view.grab();
        const double time = searchTime(proxy, text);
        times.search += time;
        times.painted += time + bench::milliseconds([&] { view.expandAll(), view.grab(); });
    }
    return times;
}

} // namespace

namespace bench {

void benchTree(Report &report)
{
    const QStringList names = fillOrganisation();
    ObjectTreeProxy proxy;
    QTreeView view;
    setUp(proxy, view);
    // Six keystrokes: the first finds most names, the last a few.
    const QString &target = names.at(names.size() / 2);
    QStringList texts;
    for (int length = 1; length <= 6; ++length)
        texts.append(target.left(length));

    // Ratios within a round, so that other load affects both times.
    QVector<double> searchRatios;
    QVector<double> paintRatios;
    QVector<double> painted;
    const double first = searchTime(proxy, texts.constLast());
    for (int round = 0; round < Rounds; ++round) {
        const double plain = scan(names, texts);
        const Keystrokes times = typeAll(proxy, view, texts);
        searchRatios.append(times.search / plain);
        paintRatios.append(times.painted / plain);
        painted.append(times.painted);
    }
    report.atMost(QStringLiteral("Organisation tree, 10,000 employees: search / plain scan of the names"),
                  median(searchRatios), 8);
    report.add(QStringLiteral("  the same with all found branches expanded and painted / plain scan"),
               median(paintRatios));
    report.add(QStringLiteral("  one keystroke, expanded and painted, on average"), median(painted) / texts.size(),
               QStringLiteral("ms"));
    report.add(QStringLiteral("  the first search, which collects the names"), first, QStringLiteral("ms"));
}

} // namespace bench
