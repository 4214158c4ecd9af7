#include "clientcache.h"
#include "datanames.h"
#include "hands.h"
#include "localstorage.h"
#include "sampleobjects.h"
#include "samplerecords.h"
#include "schedulemodel.h"
#include "scheduleproxymodel.h"
#include "testcolumns.h"
#include "tqglobals.h"

#include <QAbstractItemModelTester>
#include <QStringListModel>
#include <QtTest>

#include <functional>
#include <memory>
#include <vector>

using namespace orvex;
using namespace support;

namespace {

const QList<ScheduleMode> CommonModes{ScheduleFixed, ScheduleShift, ScheduleCalendar, ScheduleFree};
const QList<ScheduleMode> PersonalModes{SchedulePersonal};

/// The reference: the base class with the same rules, applied to variants.
class ReferenceProxy : public QSortFilterProxyModel
{
public:
    explicit ReferenceProxy(QAbstractItemModel *source)
    {
        setSourceModel(source);
        setSortCaseSensitivity(Qt::CaseInsensitive);
        setFilterCaseSensitivity(Qt::CaseInsensitive);
        setFilterKeyColumn(ScheduleModel::NameColumn);
        setSortRole(ScheduleModel::SortRole);
    }

    void setMode(const QList<ScheduleMode> &modes)
    {
        m_modes = modes;
        invalidateFilter();
    }

    void refresh() { invalidate(); }

protected:
    bool filterAcceptsRow(int row, const QModelIndex &parent) const override
    {
        const auto record = static_cast<ScheduleModel *>(sourceModel())->record(row);
        if (!QSortFilterProxyModel::filterAcceptsRow(row, parent) || !m_modes.contains(record.type))
            return false;
        const auto employee = LocalStorage::instance()->constObject(record.workerId, SUBJECT_DATANAME);
        return record.type != SchedulePersonal || record.workerId == 0 || !TQGlobals::objectName(employee).isEmpty();
    }

    bool lessThan(const QModelIndex &a, const QModelIndex &b) const override
    {
        if (QSortFilterProxyModel::lessThan(a, b))
            return true;
        if (QSortFilterProxyModel::lessThan(b, a))
            return false;
        // Ties ascend by name, then by row, in both directions.
        const bool descending = sortOrder() == Qt::DescendingOrder;
        const QString left = a.sibling(a.row(), ScheduleModel::NameColumn).data().toString();
        const QString right = b.sibling(b.row(), ScheduleModel::NameColumn).data().toString();
        const int byName = left.compare(right, Qt::CaseInsensitive);
        return (byName != 0 ? byName < 0 : a.row() < b.row()) != descending;
    }

private:
    QList<ScheduleMode> m_modes;
};

struct OpenProxy : ScheduleProxyModel
{
    using ScheduleProxyModel::filterAcceptsRow;
};

QVector<int> sourceRows(const QAbstractProxyModel &proxy)
{
    QVector<int> rows;
    for (int row = 0; row < proxy.rowCount(); ++row)
        rows.append(proxy.mapToSource(proxy.index(row, 0)).row());
    return rows;
}

/// Equal names, names that differ only in case, and letters outside Latin and Cyrillic.
const QStringList Words{"Смена",  "смена",   "СМЕНА",    "сменный", "Ёлка",     "ёлка",     "Night", "night",
                        "Straße", "strasse", "İstanbul", "Ωmega",   "𐐀deseret", "𐐨deseret", "",      "Я",
                        "я 2",    "А",       "Šifra",    "ﬁx",      "１２",     "語"};

class RandomRecords
{
public:
    explicit RandomRecords(quint32 seed)
        : m_random(seed)
    {
    }

    int below(int end) { return m_random.bounded(end); }

    QString oneOf(const QStringList &texts) { return texts.at(below(texts.size())); }

    SCHEDULE_DATA record(int id)
    {
        auto result = schedule(id, oneOf(Words) + oneOf(Words), ScheduleMode(below(5)));
        result.color = oneOf({"", "#00ff00", "#00FF00", "#123456"});
        if (below(5) > 0)
            result.startDate = QDate(2024 + below(2), 1 + below(4), 1);
        result.workerId = quint32(below(6));
        return result;
    }

    QList<quint32> ids(int known)
    {
        QList<quint32> result;
        for (int count = below(4) == 0 ? 60 : 1 + below(4); count > 0; --count)
            result.append(quint32(1 + below(known)));
        return result;
    }

private:
    QRandomGenerator m_random;
};

/// The proxy and the reference proxy on the same model, and random changes to all three.
class ProxyPair
{
public:
    explicit ProxyPair(quint32 seed)
        : m_random(seed)
    {
        storeEmployees({employee(1, "Петров", "7"), employee(2, "петров", "10"), employee(3, "", "1"),
                        deleted(employee(4, "Aдамов", "07"))});
        proxy.setSourceModel(&model);
    }

    void applyRandomChange() { m_changes.at(std::size_t(m_random.below(int(m_changes.size()))))(); }

    /// The index of each shown row in the proxy and in the source.
    [[nodiscard]] QVector<QPair<QPersistentModelIndex, QPersistentModelIndex>> shownIndexes() const
    {
        QVector<QPair<QPersistentModelIndex, QPersistentModelIndex>> indexes;
        for (int row = 0; row < proxy.rowCount(); ++row)
            indexes.append({proxy.index(row, 2), proxy.mapToSource(proxy.index(row, 2))});
        return indexes;
    }

    ScheduleModel model;
    OpenProxy proxy;
    ReferenceProxy reference{&model};

private:
    void storeBatch(const QList<quint32> &ids)
    {
        QList<SCHEDULE_DATA> records;
        for (const quint32 id : ids)
            records.append(m_random.record(int(id)));
        ScheduleModel::Records batch;
        for (const auto &record : std::as_const(records))
            batch.push_back(&record);
        model.storeRecords(batch);
    }

    template <class Change> void changeBoth(const Change &change)
    {
        change(proxy);
        change(reference);
    }

    RandomRecords m_random;
    int m_nextId = 1;
    const std::vector<std::function<void()>> m_changes{
        [this] { storeBatch({quint32(m_nextId++)}); },
        [this] {
            QList<quint32> ids = m_random.ids(m_nextId);
            for (int i = m_random.below(20); i >= 0; --i)
                ids.append(quint32(m_nextId++));
            storeBatch(ids);
        },
        [this] { storeBatch(m_random.ids(m_nextId)); },
        [this] { model.insertRecord(m_random.below(model.rowCount() + 1), m_random.record(m_nextId++)); },
        [this] { model.updateRecord(m_random.record(1 + m_random.below(m_nextId))); },
        [this] { model.removeRecord(m_random.below(model.rowCount() + 2) - 1); },
        [this] { model.removeRecords(m_random.ids(m_nextId)); },
        [this] {
            const auto modes = m_random.below(2) ? CommonModes : PersonalModes;
            changeBoth([&](auto &each) { each.setMode(modes); });
        },
        [this] {
            const auto order = m_random.below(2) ? Qt::AscendingOrder : Qt::DescendingOrder;
            const int column = m_random.below(ScheduleModel::ColumnCount + 1) - 1;
            changeBoth([&](auto &each) { each.sort(column, order); });
        },
        [this] {
            const QString text = m_random.oneOf({"", "с", "СМ", "мена", "night", "Ё", "ss", "ß", "i", "𐐀", "?"});
            changeBoth([&](auto &each) { each.setFilterFixedString(text); });
        },
        [this] {
            storeEmployees(
                {employee(quint32(1 + m_random.below(5)), m_random.oneOf(Words), m_random.oneOf(Words.mid(0, 6)))});
        },
        [this] {
            storeEmployees({}, {quint32(1 + m_random.below(5))});
            QCoreApplication::processEvents();
        },
    };
};

} // namespace

class TestScheduleProxyModel : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        qRegisterMetaType<QList<QPersistentModelIndex>>();
        qRegisterMetaType<QAbstractItemModel::LayoutChangeHint>();
    }

    void init() { clearCache(); }

    void shouldShowTheRowsOfTheReferenceProxy_data()
    {
        addColumns<int, int, bool>({"seed", "changes", "useTesters"});
        // The testers read every cell after every signal, so there are few changes with them.
        for (int seed = 1; seed <= 4; ++seed)
            QTest::addRow("with testers, seed %d", seed) << seed << 40 << true;
        for (int seed = 5; seed <= 24; ++seed)
            QTest::addRow("seed %d", seed) << seed << 200 << false;
    }

    void shouldShowTheRowsOfTheReferenceProxy()
    {
        QFETCH(int, seed);
        QFETCH(int, changes);
        QFETCH(bool, useTesters);
        ProxyPair pair{quint32(seed)};
        using Tester = QAbstractItemModelTester;
        std::unique_ptr<Tester> modelTester;
        std::unique_ptr<Tester> proxyTester;
        if (useTesters) {
            modelTester = std::make_unique<Tester>(&pair.model, Tester::FailureReportingMode::QtTest);
            proxyTester = std::make_unique<Tester>(&pair.proxy, Tester::FailureReportingMode::QtTest);
        }
        for (int i = 0; i < changes; ++i) {
            const auto shownBefore = pair.shownIndexes();
            pair.applyRandomChange();
            pair.reference.refresh();
            QCOMPARE(sourceRows(pair.proxy), sourceRows(pair.reference));
            for (int row = 0; row < pair.model.rowCount(); ++row) {
                const auto source = pair.model.index(row, 1);
                QCOMPARE(pair.proxy.mapFromSource(source).row(), pair.reference.mapFromSource(source).row());
                QCOMPARE(pair.proxy.filterAcceptsRow(row, {}), pair.reference.mapFromSource(source).isValid());
            }
            for (const auto &[index, source] : shownBefore)
                QCOMPARE(QModelIndex(index), pair.proxy.mapFromSource(source));
        }
    }

    void shouldSignalOnlyWhatChanged()
    {
        ScheduleModel model;
        for (int id = 1; id <= 50; ++id)
            model.insertRecord(id - 1, schedule(id, QString::number(100 + id)));
        ScheduleProxyModel proxy;
        proxy.setSourceModel(&model);
        proxy.setMode(CommonModes);
        proxy.sort(ScheduleModel::NameColumn, Qt::AscendingOrder);
        QSignalSpy changed(&proxy, &QAbstractItemModel::dataChanged);
        QSignalSpy layout(&proxy, &QAbstractItemModel::layoutChanged);
        QSignalSpy inserted(&proxy, &QAbstractItemModel::rowsInserted);
        QSignalSpy removed(&proxy, &QAbstractItemModel::rowsRemoved);

        auto record = model.record(9);
        record.color = "#ff0000";
        model.updateRecord(record);
        QCOMPARE(changed.size(), 1);
        QCOMPARE(changed.at(0).mid(0, 2), (QVariantList{proxy.index(9, 0), proxy.index(9, 5)}));
        QCOMPARE(layout.size() + inserted.size() + removed.size(), 0);

        record.type = SchedulePersonal;
        model.updateRecord(record);
        QCOMPARE(removed.size(), 1);
        QCOMPARE(removed.at(0).at(1).toInt(), 9);
        record.type = ScheduleFree;
        model.updateRecord(record);
        QCOMPARE(inserted.size(), 1);
        QCOMPARE(layout.size(), 0);

        // Sorting again in the same order changes nothing.
        record.name = "999";
        model.updateRecord(record);
        proxy.sort(ScheduleModel::NameColumn, Qt::AscendingOrder);
        QCOMPARE(layout.size(), 1);
    }

    void shouldPassOtherModelsToTheBaseClass()
    {
        ScheduleModel model;
        model.insertRecord(0, schedule(1, "schedule"));
        ScheduleProxyModel proxy;
        proxy.setSourceModel(&model);
        proxy.setMode(CommonModes);
        QCOMPARE(proxy.rowCount(), 1);

        QStringListModel other({"c", "b", "a"});
        proxy.setSourceModel(&other);
        proxy.setSortRole(Qt::DisplayRole);
        proxy.setFilterKeyColumn(0);
        proxy.setFilterFixedString("B");
        QCOMPARE(columnTexts(proxy, 0), QStringList{"b"});
        proxy.setFilterFixedString("");
        proxy.sort(0);
        QCOMPARE(columnTexts(proxy, 0), (QStringList{"a", "b", "c"}));

        proxy.setSourceModel(&model);
        QCOMPARE(columnTexts(proxy, ScheduleModel::NameColumn), QStringList{"schedule"});
        other.removeRows(0, 3);
        QCOMPARE(proxy.rowCount(), 1);
    }

    void shouldBeEmptyAfterTheSourceIsDestroyed()
    {
        ScheduleProxyModel proxy;
        {
            ScheduleModel model;
            model.insertRecord(0, schedule(1, "a"));
            proxy.setSourceModel(&model);
            proxy.setMode(CommonModes);
            QCOMPARE(proxy.rowCount(), 1);
        }
        QCOMPARE(proxy.rowCount(), 0);
        QVERIFY(!proxy.index(0, 0).isValid());
    }
};

QTEST_MAIN(TestScheduleProxyModel)
#include "tst_scheduleproxymodel.moc"
