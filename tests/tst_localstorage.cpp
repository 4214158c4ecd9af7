#include "clientcache.h"
#include "localstorage.h"
#include "sampleobjects.h"
#include "samplerecords.h"
#include "tqglobals.h"

#include <QtTest>

#include <algorithm>

using namespace support;

namespace {

using orvex::LocalStorage;

orvex::StorageChange everything(const QList<orvex::SCHEDULE_DATA> &schedules, const Objects &employees)
{
    return fullChange(schedules, orvex::SUBJECT_DATANAME, employees);
}

/// Records the change signals of a storage as lines like "schedules changed 1 2".
class SignalLog : public QObject
{
public:
    explicit SignalLog(LocalStorage &storage)
    {
        const auto record = [this](const QString &what) {
            return [this, what](const QList<quint32> &ids) { append(what, ids); };
        };
        const auto recordObjects = [this](const QString &what) {
            return [this, what](const QString &name, const QList<quint32> &ids) { append(name + what, ids); };
        };
        connect(&storage, &LocalStorage::scheduleChanged, this, record("schedules changed"));
        connect(&storage, &LocalStorage::scheduleRemoved, this, record("schedules removed"));
        connect(&storage, &LocalStorage::objectChanged, this, recordObjects(" changed"));
        connect(&storage, &LocalStorage::objectRemoved, this, recordObjects(" removed"));
        connect(&storage, &LocalStorage::blobChanged, this,
                [this](quint32 id, const QString &name) { append(name + " changed", {id}); });
    }

    QStringList take() { return std::exchange(m_lines, {}); }

private:
    void append(QString line, QList<quint32> ids)
    {
        std::sort(ids.begin(), ids.end());
        for (const quint32 id : ids)
            line += ' ' + QString::number(id);
        m_lines.append(line);
    }

    QStringList m_lines;
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
        storage.apply(everything({}, {employee(1, "Петров", {})}));
        QCOMPARE(employees->value(1).parameter(db::param::NAME), "Петров");
        storage.apply(everything({}, {}));
        QCOMPARE(storage.constObjects(orvex::SUBJECT_DATANAME), employees);
        QVERIFY(employees->isEmpty());
    }

    void shouldSignalARemovalBeforeTheEntryIsRemoved()
    {
        const auto full = everything({schedule(2, "Ночной")}, {employee(6, "Сидоров", {})});
        orvex::StorageChange partial;
        partial.removedSchedules = {1};
        partial.removedObjects[orvex::SUBJECT_DATANAME] = {5};
        for (const auto &change : {full, partial}) {
            LocalStorage storage;
            storage.apply(everything({schedule(1, "Дневной"), schedule(2, "Ночной")},
                                     {employee(5, "Петров", {}), employee(6, "Сидоров", {})}));
            QStringList seen;
            connect(&storage, &LocalStorage::scheduleRemoved, &storage, [&](const QList<quint32> &ids) {
                for (const quint32 id : ids)
                    seen.append(storage.schedules().value(id).name);
            });
            connect(&storage, &LocalStorage::objectRemoved, &storage, [&](const QString &name, const auto &ids) {
                for (const quint32 id : ids)
                    seen.append(TQGlobals::objectName(storage.constObject(id, name)));
            });
            storage.apply(change);
            QCOMPARE(seen, QStringList({"Петров", "Дневной"}));
            QCOMPARE(storage.schedules().keys(), QList<quint32>({2}));
            QCOMPARE(storage.constObjects(orvex::SUBJECT_DATANAME)->keys(), QList<quint32>({6}));
        }
    }

    void shouldSignalAChangeAfterTheRecordIsReplaced()
    {
        LocalStorage storage;
        storage.apply(everything({schedule(1, "Дневной")}, {}));
        QString schedulesName;
        QString employeesName;
        connect(&storage, &LocalStorage::scheduleChanged, this, [&] {
            schedulesName = storage.schedules().value(1).name;
            employeesName = TQGlobals::objectName(storage.constObject(5, orvex::SUBJECT_DATANAME));
        });

        orvex::StorageChange change;
        change.schedules.insert(1, schedule(1, "Вечерний"));
        change.objects[orvex::SUBJECT_DATANAME].insert(5, employee(5, "Петров", {}));
        storage.apply(change);

        QCOMPARE(schedulesName, "Вечерний");
        QCOMPARE(employeesName, "Петров"); // a schedule's row shows its employee
    }

    void shouldSignalOnlyTheDifferencesOfAFullChange()
    {
        LocalStorage storage;
        storage.apply(everything({schedule(1, "Дневной"), schedule(2, "Ночной"), schedule(3, "Суточный")},
                                 {employee(5, "Петров", {}), employee(6, "Сидоров", {})}));
        SignalLog log(storage);
        // Record 2 has the same version with another name, as after restoring a copy of the store.
        const auto next = everything({schedule(1, "Дневной"), schedule(2, "Склад"), schedule(4, "Гибкий")},
                                     {employee(5, "Петров", {}), employee(6, "Сидорова", {})});
        storage.apply(next);
        QCOMPARE(log.take(),
                 QStringList({orvex::SUBJECT_DATANAME + QString(" changed 6"), "schedules removed 3",
                              "schedules changed 2 4"}));
        QCOMPARE(storage.schedules().size(), 3);
        storage.apply(next);
        QCOMPARE(log.take(), QStringList());
    }

    void shouldCompareALargeStorageInAnotherThread()
    {
        LocalStorage storage;
        QList<orvex::SCHEDULE_DATA> many;
        for (int id = 1; id <= 3000; ++id)
            many.append(schedule(id, QString::number(id)));
        storage.apply(everything(many, {}));
        QCOMPARE(storage.schedules().size(), 3000);
        SignalLog log(storage);
        QSignalSpy settled(&storage, &LocalStorage::settled);

        many.removeLast();
        many.first().name = "Дневной";
        storage.apply(everything(many, {employee(5, "Петров", {})}));
        orvex::StorageChange next;
        next.schedules.insert(2, schedule(2, "Ночной"));
        next.removedSchedules = {3};
        storage.apply(next);
        QVERIFY(!storage.isSettled());
        QCOMPARE(log.take(), QStringList());
        QCOMPARE(storage.schedules().size(), 3000);

        QVERIFY(settled.wait());
        QVERIFY(storage.isSettled());
        QCOMPARE(log.take(),
                 QStringList({orvex::SUBJECT_DATANAME + QString(" changed 5"), "schedules removed 3000",
                              "schedules changed 1", "schedules removed 3", "schedules changed 2"}));
        QCOMPARE(storage.schedules().size(), 2998);
        QCOMPARE(storage.schedules().value(1).name, "Дневной");
        QCOMPARE(storage.schedules().value(2).name, "Ночной");
    }

    void shouldNotSignalTheRemovalOfAnUnknownRecord()
    {
        LocalStorage storage;
        storage.apply(everything({schedule(1, "Дневной")}, {}));
        SignalLog log(storage);
        orvex::StorageChange change;
        change.removedSchedules = {9, 1};
        change.removedObjects[orvex::SUBJECT_DATANAME] = {9};
        storage.apply(change);
        storage.apply(change);
        QCOMPARE(log.take(), QStringList("schedules removed 1"));
    }

    void shouldKeepABlobUntilItChanges()
    {
        LocalStorage storage;
        const QByteArray photo("picture");
        storage.setBlob(5, db::param::PHOTO, photo);
        storage.setBlob(6, db::param::PHOTO, photo);
        QCOMPARE(storage.blob(5, db::param::PHOTO), photo);
        QCOMPARE(storage.blobMd5(5, db::param::PHOTO), QCryptographicHash::hash(photo, QCryptographicHash::Md5));

        SignalLog log(storage);
        orvex::StorageChange change;
        change.changedBlobs[5] = QStringList(db::param::PHOTO);
        storage.apply(change);
        QCOMPARE(log.take(), QStringList(db::param::PHOTO + QString(" changed 5")));
        QVERIFY(storage.blob(5, db::param::PHOTO).isEmpty() && storage.blobMd5(5, db::param::PHOTO).isEmpty());
        QCOMPARE(storage.blob(6, db::param::PHOTO), photo);

        storage.apply(everything({}, {}));
        QCOMPARE(log.take(), QStringList(db::param::PHOTO + QString(" changed 6")));
        QVERIFY(storage.blob(6, db::param::PHOTO).isEmpty());
    }
};

QTEST_GUILESS_MAIN(TestLocalStorage)
#include "tst_localstorage.moc"
