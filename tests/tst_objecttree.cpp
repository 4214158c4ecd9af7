#include "clientcache.h"
#include "hands.h"
#include "localstorage.h"
#include "objecttreemodel.h"
#include "objecttreeproxy.h"
#include "sampleobjects.h"
#include "styleditemdelegate.h"
#include "testcolumns.h"
#include "tqglobals.h"

#include <QAbstractItemModelTester>
#include <QtTest>

#include <map>
#include <memory>

using namespace support;

namespace {

using orvex::LocalStorage;
using orvex::ObjectTreeModel;
using Tester = QAbstractItemModelTester;

const QString DataName = orvex::ORGSTRUCTURE_DATANAME;

QAbstractItemModel *tree()
{
    return LocalStorage::instance()->model(DataName);
}

/// A small organisation, unordered, with names that need natural sorting.
QList<orvex::ObjectInfo> organisation()
{
    return {employee(20, "Романов Пётр", "0017", 3),
            department(3, "Цех 10", 2),
            root(1, "Все"),
            firm(2, "Ромашка", 1),
            department(4, "Цех 2", 2),
            department(5, "Участок ромбов", 4),
            employee(21, "ёлкин Иван", "0042", 4),
            employee(22, "Яшин Олег", {}, 4),
            employee(23, "Ермаков <b>Илья</b>", {}, 4),
            employee(24, "Жуков Олег", {}, 5)};
}

/// The parent of each object by identifiers, 0 for the top; fails if an object is in the tree twice.
std::map<quint32, quint32> parents(const QAbstractItemModel &model, const QModelIndex &parent = {})
{
    std::map<quint32, quint32> found;
    for (int row = 0; row < model.rowCount(parent); ++row) {
        const QModelIndex index = model.index(row, 0, parent);
        auto below = parents(model, index);
        below.emplace(index.data().toUInt(), parent.data().toUInt());
        for (const auto &entry : below) {
            if (!found.insert(entry).second)
                qFatal("an object is in the tree twice");
        }
    }
    return found;
}

/// The names of the rows in order, each with its children: "Unit(Employee, Employee), Unit".
QString text(const QAbstractItemModel &model, const QModelIndex &parent = {})
{
    QStringList names;
    for (int row = 0; row < model.rowCount(parent); ++row) {
        const QModelIndex index = model.index(row, 0, parent);
        const QString children = text(model, index);
        names.append(index.data(ObjectTreeModel::NameRole).toString()
                     + (children.isEmpty() ? "" : '(' + children + ')'));
    }
    return names.join(", ");
}

std::unique_ptr<ObjectTreeProxy> makeProxy()
{
    auto proxy = std::make_unique<ObjectTreeProxy>();
    proxy->setSourceModel(tree());
    proxy->setSearchIndex(DataName);
    proxy->setSortRole(ObjectTreeModel::SortRole);
    proxy->setReadOnly(true);
    proxy->setSearchEnabled(true);
    proxy->setTypeFilter({db::orgstructure::SUBJECTROOT, db::orgstructure::FIRM, db::orgstructure::DEPARTMENT,
                          db::orgstructure::WORKER});
    proxy->sort(0);
    return proxy;
}

} // namespace

class TestObjectTree : public QObject
{
    Q_OBJECT

private slots:
    void init() { replaceObjects(DataName, organisation()); }

    void shouldShowObjectsWithInvalidParents_data()
    {
        addColumns<QString, QString>({"parentOf3", "parentOf4"});
        const auto row = [](const char *name, const char *parentOf3, const char *parentOf4) {
            QTest::newRow(name) << QString(parentOf3) << QString(parentOf4);
        };
        row("its own parent", "3", "2");
        row("a cycle of two", "4", "3");
        row("a cycle through a unit below", "2", "5");
        row("a parent that does not exist", "99", "2");
        row("no parent at all", "", "");
        row("a parent that is no number", "x", "-1");
        row("below an employee", "22", "2");
    }

    void shouldShowObjectsWithInvalidParents()
    {
        QFETCH(QString, parentOf3);
        QFETCH(QString, parentOf4);
        const auto invalid = [&] {
            Objects units{department(3, "Цех 10", 0), department(4, "Цех 2", 0)};
            units[0].parameters.insert(db::param::PARENT, parentOf3);
            units[1].parameters.insert(db::param::PARENT, parentOf4);
            return units;
        };
        Tester tester(tree(), Tester::FailureReportingMode::QtTest);
        storeObjects(DataName, invalid());
        QCOMPARE(parents(*tree()).size(), std::size_t(10));
        QCOMPARE(tree()->rowCount(), 1);

        // The same objects from the start, then corrected.
        auto all = organisation();
        all.removeAt(1);
        all.removeAt(3);
        replaceObjects(DataName, {});
        replaceObjects(DataName, all + invalid());
        QCOMPARE(parents(*tree()).size(), std::size_t(10));
        storeObjects(DataName, {department(3, "Цех 10", 2), department(4, "Цех 2", 2)});
        QCOMPARE(parents(*tree())[3], 2u);
        QCOMPARE(parents(*tree())[4], 2u);
    }

    void shouldSignalOnlyWhatChanged()
    {
        QSignalSpy reset(tree(), &QAbstractItemModel::modelReset);
        QSignalSpy inserted(tree(), &QAbstractItemModel::rowsInserted);
        QSignalSpy removed(tree(), &QAbstractItemModel::rowsRemoved);
        QSignalSpy changed(tree(), &QAbstractItemModel::dataChanged);
        storeObjects(DataName, {employee(22, "Яшина Ольга", {}, 4)});
        QCOMPARE(changed.size(), 1);
        QCOMPARE(changed.first().first().toModelIndex(), findRow(*tree(), 22));
        storeObjects(DataName, {employee(22, "Яшина Ольга", {}, 3)});
        QCOMPARE(QList<int>({removed.size(), inserted.size()}), QList<int>({1, 1}));
        storeObjects(DataName, {department(6, "Склад", 2), employee(30, "Белов", {}, 6)});
        QCOMPARE(inserted.size(), 3);
        // A unit and its employees are removed as one row.
        storeObjects(DataName, {}, {30, 6});
        QCOMPARE(removed.size(), 2);
        QCOMPARE(reset.size(), 0);
    }

    void shouldKeepEveryObjectThroughRandomChanges()
    {
        Tester tester(tree(), Tester::FailureReportingMode::QtTest);
        const auto proxy = makeProxy();
        Tester proxyTester(proxy.get(), Tester::FailureReportingMode::QtTest);
        QRandomGenerator random(7);
        for (int round = 0; round < 300; ++round) {
            QList<orvex::ObjectInfo> changed;
            QList<quint32> removed;
            for (int i = 0; i < 4; ++i) {
                const quint32 id = 1 + random.bounded(25u);
                const quint32 parent = random.bounded(25u);
                if (random.bounded(3) == 0)
                    removed.append(id);
                else if (id == 1)
                    changed.append(root(1, "Все"));
                else if (id < 14)
                    changed.append(department(id, QString::number(parent), parent));
                else
                    changed.append(employee(id, QString::number(parent), {}, parent));
            }
            storeObjects(DataName, changed, removed);
            const auto *objects = LocalStorage::instance()->constObjects(DataName);
            const auto found = parents(*tree());
            QCOMPARE(found.size(), std::size_t(objects->size()));
            QCOMPARE(parents(*proxy), found);
            const quint32 top = objects->contains(1) ? 1 : 0;
            for (const auto &[id, parent] : found) {
                const auto named = objects->value(id).parameter(db::param::PARENT).toUInt();
                QVERIFY2(parent == named || parent == (id == 1 ? 0 : top), "an object is under a wrong parent");
                if (id != 1 && parent != named && objects->contains(named))
                    QVERIFY2(isInCycle(id), "an object is not under its parent");
            }
        }
    }

    void shouldSortUnitsFirstAndNamesNaturally()
    {
        storeObjects(DataName, {employee(25, "Жуков Олег", {}, 3)});
        QCOMPARE(text(*makeProxy()),
                 "Все(Ромашка(Цех 2(Участок ромбов(Жуков Олег), ёлкин Иван, Ермаков <b>Илья</b>, Яшин Олег), "
                 "Цех 10(Жуков Олег, Романов Пётр)))");
    }

    void shouldFindByNameNumberAndUnit_data()
    {
        addColumns<QString, QList<quint32>>({"text", "expected"});
        using Ids = QList<quint32>;
        QTest::newRow("blank: everything") << "  " << Ids{1, 2, 3, 4, 5, 20, 21, 22, 23, 24};
        QTest::newRow("any case, ё equals е") << "ЕЛКИН" << Ids{1, 2, 4, 21};
        QTest::newRow("words in any order") << "иван ёлк" << Ids{1, 2, 4, 21};
        QTest::newRow("number") << "0017" << Ids{1, 2, 3, 20};
        QTest::newRow("name and number") << "ром 17" << Ids{1, 2, 3, 20};
        QTest::newRow("words of different objects") << "Романов Олег" << Ids{};
        QTest::newRow("employees instead of the firm of that name") << "рома" << Ids{1, 2, 3, 20};
        QTest::newRow("a unit with its employees") << "цех 10" << Ids{1, 2, 3, 20};
        QTest::newRow("a unit inside a unit") << "участок" << Ids{1, 2, 4, 5, 24};
        QTest::newRow("nested units") << "ц" << Ids{1, 2, 3, 4, 5, 20, 21, 22, 23, 24};
        QTest::newRow("markup is text") << "<b>" << Ids{1, 2, 4, 23};
        QTest::newRow("nothing") << "зззз" << Ids{};
    }

    void shouldFindByNameNumberAndUnit()
    {
        QFETCH(QString, text);
        QFETCH(QList<quint32>, expected);
        const auto proxy = makeProxy();
        Tester tester(proxy.get(), Tester::FailureReportingMode::QtTest);
        proxy->setFilter(text);
        QList<quint32> found;
        for (const auto &entry : parents(*proxy))
            found.append(entry.first);
        QCOMPARE(found, expected);
        QCOMPARE(proxy->hasFilterResult(), !text.trimmed().isEmpty() && !expected.isEmpty());
        proxy->setFilter({});
        QCOMPARE(parents(*proxy).size(), std::size_t(10));
    }

    void shouldFilterByTypeAndIdentifier()
    {
        const auto proxy = makeProxy();
        proxy->setTypeFilter({db::orgstructure::SUBJECTROOT, db::orgstructure::FIRM, db::orgstructure::DEPARTMENT});
        QCOMPARE(parents(*proxy).size(), std::size_t(5));
        proxy->setTypeFilter({});
        proxy->setIdFilter({4, 20});
        QCOMPARE(text(*proxy), "Все(Ромашка(Цех 2, Цех 10(Романов Пётр)))");
        proxy->setFilter("о");
        QCOMPARE(parents(*proxy).size(), std::size_t(4));
    }

    void shouldSearchAgainOnceAfterChanges()
    {
        const auto proxy = makeProxy();
        Tester tester(proxy.get(), Tester::FailureReportingMode::QtTest);
        proxy->setFilter("олег");
        QSignalSpy layout(proxy.get(), &QAbstractItemModel::layoutChanged);
        storeObjects(DataName, {employee(40, "Олегов", {}, 3), employee(22, "Яшин Игорь", {}, 4)});
        storeObjects(DataName, {}, {24});
        QTRY_COMPARE(text(*proxy), "Все(Ромашка(Цех 10(Олегов)))");
        QCOMPARE(layout.size(), 1);
    }

    void shouldShowNamesInsteadOfIdentifiersAndEscapeThemInToolTips()
    {
        const auto proxy = makeProxy();
        const QModelIndex index = findRow(*proxy, 23);
        QCOMPARE(index.data(Qt::ToolTipRole).toString(), "<qt>Ермаков &lt;b&gt;Илья&lt;/b&gt;</qt>");
        QStyleOptionViewItem option;
        const QString name = index.data(ObjectTreeModel::NameRole).toString();
        QVERIFY(StyledItemDelegate().sizeHint(option, index).width() >= option.fontMetrics.horizontalAdvance(name));
    }

private:
    static bool isInCycle(quint32 start)
    {
        const auto *objects = LocalStorage::instance()->constObjects(DataName);
        quint32 id = start;
        for (int step = 0; step < objects->size(); ++step) {
            id = objects->value(id).parameter(db::param::PARENT).toUInt();
            if (id == start)
                return true;
        }
        return false;
    }
};

QTEST_MAIN(TestObjectTree)
#include "tst_objecttree.moc"
