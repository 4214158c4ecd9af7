#include "changefeed.h"

#include "connection.h"
#include "datanames.h"
#include "records.h"

#include <QStringList>

namespace store {

namespace {

constexpr qint64 KeptChanges = 100000;
// A minimum by count: after a jump of the clock, requests that may be sent again would all be too old.
constexpr int KeptRequestDays = 30;
constexpr int KeptRequests = 10000;

/// Runs the statement `<table>_all`, or `<table>_by_id` with \a ids. \a readRow receives each row and returns its
/// identifier. Returns those of \a ids that have no row.
template <class ReadRow>
QList<quint32> readRows(Connection &connection, const QByteArray &table, const QSet<quint32> *ids, ReadRow readRow)
{
    Query select = connection.query(table + (ids ? "_by_id" : "_all"));
    if (ids)
        select.bindIds(ids->values());
    QSet<quint32> missing = ids ? *ids : QSet<quint32>();
    if (!select.exec())
        return {};
    while (!connection.isInterrupted() && select.next()) {
        const quint32 id = readRow(select);
        if (ids)
            missing.remove(id);
    }
    return missing.values();
}

void addRemoved(orvex::StorageChange &change, const QString &dataName, const QList<quint32> &ids)
{
    if (!ids.isEmpty())
        change.removedObjects[dataName] += ids;
}

/// Reads the rows of a table into the objects of \a dataName, each made by \a make.
template <class Make>
void readObjects(Connection &connection, const QByteArray &table, const QString &dataName, const QSet<quint32> *ids,
                 orvex::StorageChange &change, Make make)
{
    const auto removed = readRows(connection, table, ids, [&](const Query &row) {
        const orvex::ObjectInfo object = make(row);
        change.objects[dataName].insert(object.id, object);
        return object.id;
    });
    addRemoved(change, dataName, removed);
}

} // namespace

ChangeFeed::ChangeFeed(Connection &connection)
    : m_connection(connection)
{
}

Outcome ChangeFeed::snapshot(orvex::StorageChange &change)
{
    Position now;
    Outcome outcome = m_connection.transact(Transaction::Read, [this, &now, &change]() -> Outcome {
        return readPosition(now) ? readAll(change) : m_connection.failure();
    });
    if (outcome.ok())
        m_position = now;
    else
        change = {};
    return outcome;
}

Outcome ChangeFeed::next(orvex::StorageChange &change)
{
    change = {};
    Position now;
    Outcome outcome = m_connection.transact(Transaction::Read, [this, &now, &change]() -> Outcome {
        if (!readPosition(now))
            return m_connection.failure();
        if (!m_position.feedId.isEmpty() && now.schema != m_position.schema)
            return {ResultNoConnection, tr("Схема хранилища данных изменилась."), tr("Перезапустите программу.")};
        const bool isCovered = now.feedId == m_position.feedId && now.cut <= m_position.seq;
        if (!isCovered || now.seq < m_position.seq)
            return readAll(change);
        return now.seq == m_position.seq ? Outcome() : readEntries(change);
    });
    if (outcome.ok())
        m_position = now;
    else
        change = {};
    return outcome;
}

Outcome ChangeFeed::cutLogs()
{
    const QString before = m_connection.time().addDays(-KeptRequestDays).toString(Qt::ISODateWithMs);
    qint64 seq = 0;
    bool hasOldRequests = false;
    // Read first: if there is nothing to remove, no lock is needed.
    Outcome checked = m_connection.transact(Transaction::Read, [&]() -> Outcome {
        if (Query cut = m_connection.query("change_log_cut_point"); cut.bind(":keep", KeptChanges).execFirst())
            seq = cut.bigNumber(0);
        hasOldRequests =
            m_connection.query("request_log_old").bind(":before", before).bind(":keep", KeptRequests).execFirst();
        return m_connection.failure();
    });
    if (!checked.ok() || (seq == 0 && !hasOldRequests))
        return checked;
    return m_connection.transact(Transaction::Write, [&]() -> Outcome {
        const bool done =
            m_connection.query("request_log_cut").bind(":before", before).bind(":keep", KeptRequests).exec()
            && (seq == 0
                || (m_connection.query("change_log_cut").bind(":seq", seq).exec()
                    && m_connection.query("feed_cut").bind(":seq", seq).exec()));
        return done ? Outcome() : m_connection.failure();
    });
}

bool ChangeFeed::readPosition(Position &position)
{
    Query select = m_connection.query("feed_state");
    if (!select.execFirst())
        return false;
    position.feedId = select.text(0);
    position.cut = select.bigNumber(1);
    position.seq = select.bigNumber(2);
    position.schema = select.number(3);
    return true;
}

Outcome ChangeFeed::readAll(orvex::StorageChange &change)
{
    change = {};
    change.full = true;
    for (const QLatin1String name : {orvex::SUBJECT_DATANAME, orvex::ORGSTRUCTURE_DATANAME,
                                     orvex::SCHEDULE_SHIFT_DATANAME, orvex::SHIFT_INTERVAL_DATANAME})
        change.objects.insert(name, {});
    readUnits(nullptr, change);
    readSubjects(nullptr, change);
    readShifts(nullptr, change);
    readIntervals(nullptr, change);
    readSchedules(nullptr, change);
    return m_connection.failure();
}

Outcome ChangeFeed::readEntries(orvex::StorageChange &change)
{
    QHash<QString, Ids> changed;
    Query select = m_connection.query("feed_entries");
    if (!select.bind(":last", m_position.seq).exec())
        return m_connection.failure();
    while (select.next()) {
        const QString entity = select.text(0);
        if (entity == QLatin1String("blob"))
            change.changedBlobs[select.id(1)].append(select.text(2));
        else
            changed[entity].insert(select.id(1));
    }

    using Reader = void (ChangeFeed::*)(const Ids *, orvex::StorageChange &);
    static const QHash<QString, Reader> readers{
        {QStringLiteral("org_unit"), &ChangeFeed::readUnits},
        {QStringLiteral("subject"), &ChangeFeed::readSubjects},
        {QStringLiteral("schedule_shift"), &ChangeFeed::readShifts},
        {QStringLiteral("shift_interval"), &ChangeFeed::readIntervals},
        {QStringLiteral("schedule"), &ChangeFeed::readSchedules},
    };
    for (auto it = changed.cbegin(); it != changed.cend(); ++it) {
        if (const Reader reader = readers.value(it.key()))
            (this->*reader)(&it.value(), change);
    }
    return m_connection.failure();
}

void ChangeFeed::readSchedules(const Ids *ids, orvex::StorageChange &change)
{
    TextPool pool;
    change.removedSchedules = readRows(m_connection, "schedules", ids, [&change, &pool, ids](const Query &row) {
        const auto schedule = records::schedule(row, pool);
        if (!ids)
            change.scheduleIds.append(quint32(schedule.id));
        change.schedules.insert(quint32(schedule.id), schedule);
        return quint32(schedule.id);
    });
}

void ChangeFeed::readSubjects(const Ids *ids, orvex::StorageChange &change)
{
    TextPool pool;
    orvex::ObjectHash subjects;
    const auto removed = readRows(m_connection, "subjects", ids, [&subjects, &pool](const Query &row) {
        const auto subject = records::subject(row, pool);
        subjects.insert(subject.id, subject);
        return subject.id;
    });
    // An employee is listed both by itself and as a leaf of the organisation tree.
    for (const QString &dataName : {QString(orvex::SUBJECT_DATANAME), QString(orvex::ORGSTRUCTURE_DATANAME)}) {
        addRemoved(change, dataName, removed);
        for (auto it = subjects.cbegin(); it != subjects.cend(); ++it)
            change.objects[dataName].insert(it.key(), it.value());
    }
}

void ChangeFeed::readUnits(const Ids *ids, orvex::StorageChange &change)
{
    readObjects(m_connection, "org_units", orvex::ORGSTRUCTURE_DATANAME, ids, change, records::unit);
}

void ChangeFeed::readShifts(const Ids *ids, orvex::StorageChange &change)
{
    QHash<quint32, QStringList> intervals;
    readRows(m_connection, "interval_order", ids, [&intervals](const Query &row) {
        intervals[row.id(0)].append(row.text(1));
        return row.id(0);
    });
    readObjects(m_connection, "schedule_shifts", orvex::SCHEDULE_SHIFT_DATANAME, ids, change,
                [&intervals](const Query &row) { return records::shift(row, intervals.value(row.id(0))); });
}

void ChangeFeed::readIntervals(const Ids *ids, orvex::StorageChange &change)
{
    readObjects(m_connection, "shift_intervals", orvex::SHIFT_INTERVAL_DATANAME, ids, change, records::interval);
}

} // namespace store
