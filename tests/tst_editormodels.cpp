#include "dayschedulemodel.h"
#include "samplerecords.h"
#include "shiftmodel.h"
#include "shifttimemodel.h"
#include "testcolumns.h"

#include <QtTest>

#include <limits>

using namespace orvex;
using namespace support;

namespace {

const SCHEDULE_SHIFT_TIME NewTime = {-1, 3600, 7200};

} // namespace

class TestEditorModels : public QObject
{
    Q_OBJECT

private slots:
    void shouldApplyDayEdits_data()
    {
        addColumns<int, int, QVariant, int, int, bool>({"row", "column", "value", "shift", "shiftId", "dayOff"});

        QTest::newRow("a shift for a day off") << 2 << 1 << QVariant(1) << 1 << 12 << false;
        QTest::newRow("another shift") << 0 << 1 << QVariant(1) << 1 << 12 << false;
        QTest::newRow("a shift as a 64-bit number") << 2 << 1 << QVariant(0LL) << 0 << 11 << false;
        QTest::newRow("no shift") << 0 << 1 << QVariant(-1) << -1 << -1 << true;
        QTest::newRow("one past the last shift") << 0 << 1 << QVariant(2) << -1 << -1 << true;
        QTest::newRow("a number past 32 bits") << 0 << 1 << QVariant(1LL << 32) << -1 << -1 << true;
        QTest::newRow("a shift as text") << 0 << 1 << QVariant("1") << -1 << -1 << true;
        QTest::newRow("off") << 0 << 2 << QVariant(true) << -1 << -1 << true;
        QTest::newRow("not off, without a shift") << 2 << 2 << QVariant(false) << -1 << -1 << false;
        QTest::newRow("not off, with a shift") << 0 << 2 << QVariant(false) << 0 << 11 << false;
        QTest::newRow("off as a number") << 0 << 2 << QVariant(1) << 0 << 11 << false;
    }
    void shouldApplyDayEdits()
    {
        QFETCH(int, row);
        QFETCH(int, column);
        QFETCH(QVariant, value);
        auto schedule = shiftCycle();
        DayScheduleModel model(&schedule, nullptr);
        const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::QtTest);
        const QSignalSpy changed(&model, &QAbstractItemModel::dataChanged);

        QVERIFY(!model.setData(model.index(row, column), value, Qt::DisplayRole));
        QVERIFY(!model.setData(model.index(row, 0), value, Qt::EditRole));
        QVERIFY(model.setData(model.index(row, column), value, Qt::EditRole));

        QTEST(schedule.days.at(row).shift, "shift");
        QTEST(schedule.days.at(row).shiftId, "shiftId");
        QTEST(schedule.days.at(row).dayOff, "dayOff");
        QCOMPARE(changed.count(), 1);
        QCOMPARE(changed.first().mid(0, 2), (QVariantList{model.index(row, 1), model.index(row, 2)}));
    }

    void shouldInsertAndRemoveDays()
    {
        auto schedule = shiftCycle();
        DayScheduleModel model(&schedule, nullptr);
        const QSignalSpy inserted(&model, &QAbstractItemModel::rowsInserted);
        const QSignalSpy removed(&model, &QAbstractItemModel::rowsRemoved);
        const QPersistentModelIndex last = model.index(2, 1);

        QVERIFY(model.insertRow(1, {-1, -1, -1, true}));
        QCOMPARE(inserted.first().mid(1), QVariantList({1, 1}));
        QCOMPARE(last.row(), 3);
        QVERIFY(model.removeRow(0));
        QCOMPARE(removed.first().mid(1), QVariantList({0, 0}));
        // A row out of range is announced, too.
        QVERIFY(model.removeRow(3));
        QCOMPARE(removed.last().mid(1), QVariantList({3, 3}));
        QCOMPARE(scheduleText(schedule).section(" |", 0, 0), ": - 1 -");
        QCOMPARE(schedule.days.first().id, -1);
    }

    void shouldShowIntervalsOfCurrentShift()
    {
        auto schedule = shiftCycle();
        ShiftTimeModel model(&schedule, nullptr);
        const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::QtTest);
        const QSignalSpy reset(&model, &QAbstractItemModel::modelReset);
        QList<int> counts{model.rowCount()};
        for (const int position : {0, 1, 2, -1, std::numeric_limits<int>::min()}) {
            model.setCurrentShift(position);
            const int rows = model.rowCount();
            QCOMPARE(model.insertRow(rows, NewTime), rows > 0);
            counts << rows << model.rowCount();
            QCOMPARE(model.removeRow(rows), rows > 0);
            QCOMPARE(model.rowCount(), rows);
        }
        QCOMPARE(counts, QList({0, 2, 3, 1, 2, 0, 0, 0, 0, 0, 0})); // nothing of a shift outside the list
        QCOMPARE(reset.count(), 5);
    }

    void shouldEditIntervals()
    {
        auto schedule = shiftCycle();
        ShiftTimeModel model(&schedule, nullptr);
        model.setCurrentShift(0);
        const QSignalSpy changed(&model, &QAbstractItemModel::dataChanged);
        const auto finish = model.index(1, ShiftTimeModel::FinishColumn);

        QVERIFY(!model.setData(finish, 64800, Qt::DisplayRole));
        QVERIFY(model.setData(finish, 64800, Qt::EditRole));
        QVERIFY(model.time(1) == SCHEDULE_SHIFT_TIME({2, 46800, 64800}));
        QCOMPARE(changed.count(), 1);
        QCOMPARE(changed.first().mid(0, 2), (QVariantList{finish, finish}));

        QVERIFY(model.updateRow(0, model.time(1)));
        QVERIFY(!model.updateRow(2, NewTime));
        QVERIFY(!model.updateRow(-1, NewTime));
        QVERIFY(model.time(0) == model.time(1));
        QCOMPARE(changed.count(), 2);
        QCOMPARE(changed.last().mid(0, 2), (QVariantList{model.index(0, 0), model.index(0, 1)}));
        QVERIFY(model.time(2) == SCHEDULE_SHIFT_TIME());
    }
};

QTEST_APPLESS_MAIN(TestEditorModels)
#include "tst_editormodels.moc"
