#include "clientcache.h"
#include "hands.h"
#include "sampleobjects.h"
#include "samplerecords.h"
#include "schedulemodel.h"
#include "testcolumns.h"
#include "tqstyles.h"

#include <QAbstractItemModelTester>
#include <QIcon>
#include <QtTest>

using namespace orvex;
using namespace support;

class TestScheduleModel : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        qRegisterMetaType<QList<QPersistentModelIndex>>();
        qRegisterMetaType<QAbstractItemModel::LayoutChangeHint>();
        tqstyles::install();
        QLocale::setDefault(QLocale(QLocale::Russian, QLocale::Russia));
    }

    void init() { clearCache(); }

    void shouldShowARecord_data()
    {
        addColumns<quint32, QString, QString, QString>({"workerId", "name", "number", "icon"});
        const QString missing = "object-OT_WORKER-d";
        QTest::newRow("present employee") << 1u << "Иванова Анна" << QString("007") << "object-OT_WORKER";
        QTest::newRow("deleted employee") << 2u << "Петров Пётр" << QString("8") << missing;
        QTest::newRow("missing employee") << 3u << QString() << QString() << missing;
        QTest::newRow("no employee") << 0u << QString() << QString() << missing;
    }

    void shouldShowARecord()
    {
        QFETCH(quint32, workerId);
        storeEmployees({employee(1, "Иванова Анна", "007"), deleted(employee(2, "Петров Пётр", "8"))});
        auto record = personalSchedule(5, "Отпуск", workerId, {2025, 3, 1});
        record.color = "#102030";
        ScheduleModel model;
        model.insertRecord(0, record);
        const auto data = [&model](int column, int role) { return model.index(0, column).data(role); };
        for (const int role : {int(Qt::DisplayRole), int(ScheduleModel::SortRole)}) {
            QCOMPARE(data(0, role), QVariant("#102030"));
            QCOMPARE(data(1, role), QVariant("Отпуск"));
            QCOMPARE(data(2, role), QVariant(4));
            QTEST(data(3, role).toString(), "name");
            QTEST(data(4, role).toString(), "number");
        }
        QCOMPARE(data(5, Qt::DisplayRole), QVariant(QLocale().toString(record.startDate, "MMMM yyyy")));
        QCOMPARE(data(5, ScheduleModel::SortRole), QVariant(record.startDate));
        QCOMPARE(data(1, Qt::DecorationRole).value<QIcon>().name(), "plugin-schedule");
        QTEST(data(3, Qt::DecorationRole).value<QIcon>().name(), "icon");
        for (const int column : {0, 2, 4, 5})
            QVERIFY(!data(column, Qt::DecorationRole).isValid());
    }

    void shouldIgnoreRowsOutOfRange()
    {
        ScheduleModel model;
        model.insertRecord(0, schedule(1, "a"));
        QCOMPARE(model.rowCount(model.index(0, 1)), 0);
        QVERIFY(!model.index(0, 6).isValid() && !model.index(1, 0).isValid());
        QCOMPARE(model.record(-1).id, SCHEDULE_DATA().id);
        QCOMPARE(model.record(1).id, SCHEDULE_DATA().id);
        QVERIFY(!model.removeRecord(1) && !model.removeRecord(-1) && !model.updateRecord(schedule(2, "b")));
        QVERIFY(model.updateRecord(schedule(1, "changed")));
        QCOMPARE(model.record(0).name, "changed");
    }

    void shouldFindRowsLikeALinearSearch()
    {
        QRandomGenerator random(11);
        ScheduleModel model;
        QList<int> ids;
        for (int step = 0; step < 3000; ++step) {
            const int id = int(random.bounded(400)) - 1;
            if (random.bounded(3) > 0) {
                const int row = random.bounded(4) > 0 ? ids.size() : int(random.bounded(quint32(ids.size() + 1)));
                model.insertRecord(row, schedule(id, QString::number(id)));
                ids.insert(row, id);
            } else if (!ids.isEmpty()) {
                const int row = int(random.bounded(quint32(ids.size())));
                model.removeRecord(row);
                ids.removeAt(row);
            }
            const int wanted = int(random.bounded(400)) - 1;
            QCOMPARE(model.row(wanted), wanted == -1 ? -1 : ids.indexOf(wanted));
        }
        for (int row = 0; row < ids.size(); ++row)
            QCOMPARE(model.foldedName(row).toString(), QString::number(ids.at(row)));
    }

    void shouldSignalABatchOnce()
    {
        ScheduleModel model;
        addSchedules(&model, 5);
        QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::QtTest);
        QSignalSpy inserted(&model, &QAbstractItemModel::rowsInserted);
        QSignalSpy changed(&model, &QAbstractItemModel::dataChanged);
        const QList<SCHEDULE_DATA> records{schedule(9, "old nine"), schedule(2, "two"),  schedule(8, "eight"),
                                           schedule(9, "nine"),     schedule(5, "five"), schedule(1, "one")};
        ScheduleModel::Records batch;
        for (const auto &record : records)
            batch.push_back(&record);
        const auto stored = model.storeRecords(batch);
        QCOMPARE((QList<int>{stored.appended, stored.updated, stored.lastAppended}), (QList<int>{2, 3, 8}));
        QCOMPARE(columnTexts(model, ScheduleModel::NameColumn),
                 (QStringList{"one", "two", "3", "4", "five", "nine", "eight"}));
        QCOMPARE(inserted.size(), 1);
        QCOMPARE(inserted.at(0).mid(1), (QVariantList{5, 6}));
        // One signal per run of consecutive rows, for all columns.
        QCOMPARE(changed.size(), 2);
        QCOMPARE(changed.at(0).mid(0, 2), (QVariantList{model.index(0, 0), model.index(1, 5)}));
    }

    void shouldRemoveConsecutiveAndScatteredRows()
    {
        ScheduleModel model;
        addSchedules(&model, 10);
        QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::QtTest);
        QSignalSpy removed(&model, &QAbstractItemModel::rowsRemoved);
        QSignalSpy layout(&model, &QAbstractItemModel::layoutChanged);
        const QPersistentModelIndex four = model.index(3, 2);
        const QPersistentModelIndex nine = model.index(8, 1);

        QCOMPARE(model.removeRecords({3, 99, 2, 3}), 2);
        QCOMPARE(removed.size(), 1);
        QCOMPARE(removed.at(0).mid(1), (QVariantList{1, 2}));
        QCOMPARE(four.row(), 1);

        QCOMPARE(model.removeRecords({10, 4, 7}), 3);
        QCOMPARE(layout.size(), 1);
        QCOMPARE(model.rowCount(), 5);
        QVERIFY(!four.isValid());
        QCOMPARE(model.record(nine.row()).id, 9);
        QCOMPARE(model.row(9), nine.row());
        QCOMPARE(model.removeRecords({4}), 0);
    }

    void shouldSignalTheRowsOfChangedEmployees()
    {
        storeEmployees({employee(1, "Иванов", "1"), employee(2, "Петров", "2")});
        ScheduleModel model;
        for (int id = 0; id < 6; ++id)
            model.insertRecord(id, personalSchedule(id, QString::number(id), quint32(id % 3), {2025, 1, 1}));
        QSignalSpy changed(&model, &QAbstractItemModel::dataChanged);
        storeEmployees({employee(2, "Сидоров", "2")});
        QCOMPARE(changed.size(), 2);
        QCOMPARE(changed.at(0).mid(0, 2), (QVariantList{model.index(2, 3), model.index(2, 4)}));
        QCOMPARE(changed.at(1).at(0).toModelIndex(), model.index(5, 3));
        // A removal is signalled after the object is removed.
        storeEmployees({}, {1});
        QTRY_COMPARE(changed.size(), 4);
        QVERIFY(model.index(1, 3).data().toString().isEmpty());
    }

private:
    /// Adds schedules named by their identifiers, from 1.
    static void addSchedules(ScheduleModel *model, int count)
    {
        for (int id = 1; id <= count; ++id)
            model->insertRecord(id - 1, schedule(id, QString::number(id)));
    }
};

QTEST_MAIN(TestScheduleModel)
#include "tst_schedulemodel.moc"
