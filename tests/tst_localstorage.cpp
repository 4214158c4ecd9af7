#include "clientcache.h"
#include "localstorage.h"
#include "sampleobjects.h"
#include "samplerecords.h"
#include "tqglobals.h"

#include <QCryptographicHash>
#include <QSignalSpy>
#include <QtTest>

#include <algorithm>

using namespace support;

namespace {

using orvex::LocalStorage;

orvex::StorageChange everything(const QList<orvex::SCHEDULE_DATA> &schedules, const Objects &employees)
{
    return fullChange(schedules, orvex::SUBJECT_DATANAME, employees);
}

QList<quint32> sorted(QList<quint32> ids)
{
    std::sort(ids.begin(), ids.end());
    return ids;
}

QList<quint32> ids(const QSignalSpy &spy, int argument = 0)
{
    return spy.isEmpty() ? QList<quint32>() : sorted(spy.last().at(argument).value<QList<quint32>>());
}

/// Spies on all change signals of a storage.
struct Spies
{
    explicit Spies(LocalStorage &storage)
        : scheduleChanged(&storage, &LocalStorage::scheduleChanged)
        , scheduleRemoved(&storage, &LocalStorage::scheduleRemoved)
        , objectChanged(&storage, &LocalStorage::objectChanged)
        , objectRemoved(&storage, &LocalStorage::objectRemoved)
        , blobChanged(&storage, &LocalStorage::blobChanged)
    {
    }
    [[nodiscard]] int count() const
    {
        return scheduleChanged.count() + scheduleRemoved.count() + objectChanged.count() + objectRemoved.count()
            + blobChanged.count();
    }

    QSignalSpy scheduleChanged;
    QSignalSpy scheduleRemoved;
    QSignalSpy objectChanged;
    QSignalSpy objectRemoved;
    QSignalSpy blobChanged;
};

} // namespace

class TestLocalStorage : public QObject
{
    Q_OBJECT

private slots:
    void shouldKeepThePointerToTheObjectsOfADataName()
    {
        LocalStorage storage;
        const auto employees = storage.constObjects(orvex::SUBJECT_DATANAME);
        storage.apply(everything({}, {employee(1, QStringLiteral("Петров"), {})}));
        QCOMPARE(employees->value(1).parameter(db::param::NAME), QStringLiteral("Петров"));
        storage.apply(everything({}, {}));
        QCOMPARE(storage.constObjects(orvex::SUBJECT_DATANAME), employees);
        QVERIFY(employees->isEmpty());
    }

    void shouldSignalARemovalBeforeTheEntryIsRemoved_data()
    {
        QTest::addColumn<bool>("full");
        QTest::newRow("partial change") << false;
        QTest::newRow("full change") << true;
    }

    void shouldSignalARemovalBeforeTheEntryIsRemoved()
    {
        QFETCH(bool, full);
        LocalStorage storage;
        storage.apply(
            everything({schedule(1, QStringLiteral("Дневной")), schedule(2, QStringLiteral("Ночной"))},
                       {employee(5, QStringLiteral("Петров"), {}), employee(6, QStringLiteral("Сидоров"), {})}));
        QStringList seen;
        connect(&storage, &LocalStorage::scheduleRemoved, this, [&](const QList<quint32> &ids) {
            for (const quint32 id : ids)
                seen.append(storage.schedules().value(id).name);
        });
        connect(&storage, &LocalStorage::objectRemoved, this, [&](const QString &dataName, const QList<quint32> &ids) {
            for (const quint32 id : ids)
                seen.append(TQGlobals::objectName(storage.constObject(id, dataName)));
        });

        auto change = everything({schedule(2, QStringLiteral("Ночной"))}, {employee(6, QStringLiteral("Сидоров"), {})});
        if (!full) {
            change = {};
            change.removedSchedules = {1};
            change.removedObjects[orvex::SUBJECT_DATANAME] = {5};
        }
        storage.apply(change);

        QCOMPARE(seen, QStringList({QStringLiteral("Петров"), QStringLiteral("Дневной")}));
        QCOMPARE(storage.schedules().keys(), QList<quint32>({2}));
        QVERIFY(storage.constObject(5, orvex::SUBJECT_DATANAME).isNull());
        QVERIFY(!storage.constObject(6, orvex::SUBJECT_DATANAME).isNull());
    }

    void shouldSignalAChangeAfterTheRecordIsReplaced()
    {
        LocalStorage storage;
        storage.apply(everything({schedule(1, QStringLiteral("Дневной"))}, {}));
        QString schedulesName;
        QString employeesName;
        connect(&storage, &LocalStorage::scheduleChanged, this, [&] {
            schedulesName = storage.schedules().value(1).name;
            employeesName = TQGlobals::objectName(storage.constObject(5, orvex::SUBJECT_DATANAME));
        });

        orvex::StorageChange change;
        change.schedules.insert(1, schedule(1, QStringLiteral("Вечерний")));
        change.objects[orvex::SUBJECT_DATANAME].insert(5, employee(5, QStringLiteral("Петров"), {}));
        storage.apply(change);

        QCOMPARE(schedulesName, QStringLiteral("Вечерний"));
        QCOMPARE(employeesName, QStringLiteral("Петров")); // a schedule's row shows its employee
    }

    void shouldSignalOnlyTheDifferencesOfAFullChange()
    {
        LocalStorage storage;
        auto renamed = schedule(2, QStringLiteral("Ночной"));
        storage.apply(
            everything({schedule(1, QStringLiteral("Дневной")), renamed, schedule(3, QStringLiteral("Суточный"))},
                       {employee(5, QStringLiteral("Петров"), {}), employee(6, QStringLiteral("Сидоров"), {})}));
        Spies spies(storage);

        // The same version with other contents, as after restoring a copy of the store.
        renamed.name = QStringLiteral("Ночной (склад)");
        storage.apply(
            everything({schedule(1, QStringLiteral("Дневной")), renamed, schedule(4, QStringLiteral("Гибкий"))},
                       {employee(5, QStringLiteral("Петров"), {}), employee(6, QStringLiteral("Сидорова"), {})}));
        QCOMPARE(spies.count(), 3);
        QCOMPARE(ids(spies.scheduleChanged), QList<quint32>({2, 4}));
        QCOMPARE(ids(spies.scheduleRemoved), QList<quint32>({3}));
        QCOMPARE(spies.objectChanged.last().at(0).toString(), QString(orvex::SUBJECT_DATANAME));
        QCOMPARE(ids(spies.objectChanged, 1), QList<quint32>({6}));
        QCOMPARE(sorted(storage.schedules().keys()), QList<quint32>({1, 2, 4}));

        storage.apply(
            everything({schedule(1, QStringLiteral("Дневной")), renamed, schedule(4, QStringLiteral("Гибкий"))},
                       {employee(5, QStringLiteral("Петров"), {}), employee(6, QStringLiteral("Сидорова"), {})}));
        QCOMPARE(spies.count(), 3);
    }

    void shouldCompareALargeStorageInAnotherThread()
    {
        LocalStorage storage;
        QList<orvex::SCHEDULE_DATA> many;
        for (int id = 1; id <= 3000; ++id)
            many.append(schedule(id, QString::number(id)));
        storage.apply(everything(many, {}));
        QCOMPARE(storage.schedules().size(), 3000);
        Spies spies(storage);
        QSignalSpy settled(&storage, &LocalStorage::settled);

        many.removeLast();
        many.first().name = QStringLiteral("Дневной");
        storage.apply(everything(many, {employee(5, QStringLiteral("Петров"), {})}));
        orvex::StorageChange next;
        next.schedules.insert(2, schedule(2, QStringLiteral("Ночной")));
        next.removedSchedules = {3};
        storage.apply(next);
        QVERIFY(!storage.isSettled());
        QCOMPARE(spies.count(), 0);
        QCOMPARE(storage.schedules().size(), 3000);

        QVERIFY(settled.wait());
        QVERIFY(storage.isSettled());
        QCOMPARE(spies.scheduleChanged.at(0).at(0).value<QList<quint32>>(), QList<quint32>({1}));
        QCOMPARE(spies.scheduleRemoved.at(0).at(0).value<QList<quint32>>(), QList<quint32>({3000}));
        QCOMPARE(spies.scheduleChanged.at(1).at(0).value<QList<quint32>>(), QList<quint32>({2}));
        QCOMPARE(spies.scheduleRemoved.at(1).at(0).value<QList<quint32>>(), QList<quint32>({3}));
        QCOMPARE(spies.objectChanged.count(), 1);
        QCOMPARE(storage.schedules().size(), 2998);
        QCOMPARE(storage.schedules().value(1).name, QStringLiteral("Дневной"));
        QCOMPARE(storage.schedules().value(2).name, QStringLiteral("Ночной"));
    }

    void shouldNotSignalTheRemovalOfAnUnknownRecord()
    {
        LocalStorage storage;
        storage.apply(everything({schedule(1, QStringLiteral("Дневной"))}, {}));
        Spies spies(storage);
        orvex::StorageChange change;
        change.removedSchedules = {9};
        change.removedObjects[orvex::SUBJECT_DATANAME] = {9};
        storage.apply(change);
        QCOMPARE(spies.count(), 0);
        change.removedSchedules = {9, 1};
        storage.apply(change);
        QCOMPARE(ids(spies.scheduleRemoved), QList<quint32>({1}));
    }

    void shouldKeepABlobUntilItChanges()
    {
        LocalStorage storage;
        const QByteArray photo("picture");
        storage.setBlob(5, db::param::PHOTO, photo);
        storage.setBlob(6, db::param::PHOTO, photo);
        QCOMPARE(storage.blob(5, db::param::PHOTO), photo);
        QCOMPARE(storage.blobMd5(5, db::param::PHOTO), QCryptographicHash::hash(photo, QCryptographicHash::Md5));

        Spies spies(storage);
        orvex::StorageChange change;
        change.changedBlobs[5] = QStringList(db::param::PHOTO);
        storage.apply(change);
        QCOMPARE(spies.count(), 1);
        QCOMPARE(spies.blobChanged.last().at(0).toUInt(), 5U);
        QCOMPARE(spies.blobChanged.last().at(1).toString(), QString(db::param::PHOTO));
        QVERIFY(storage.blob(5, db::param::PHOTO).isEmpty() && storage.blobMd5(5, db::param::PHOTO).isEmpty());
        QCOMPARE(storage.blob(6, db::param::PHOTO), photo);

        storage.apply(everything({}, {}));
        QCOMPARE(spies.blobChanged.count(), 2);
        QCOMPARE(spies.blobChanged.last().at(0).toUInt(), 6U);
        QVERIFY(storage.blob(6, db::param::PHOTO).isEmpty());
    }
};

QTEST_GUILESS_MAIN(TestLocalStorage)
#include "tst_localstorage.moc"
