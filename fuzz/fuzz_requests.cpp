#include "scratchstore.h"
#include "target.h"

#include "calendardays.h"
#include "requests.h"
#include "tqdatastream.h"

// Requests with an untrusted payload to a store. The first byte selects the request.

namespace {

const QLatin1String Names[] = {
    request::AddSchedule,         request::UpdateSchedule,         request::RemoveSchedules,
    request::GetScheduleCalendar, request::UpdateScheduleCalendar, request::GetBlobDataChange};

ScratchStore &scratchStore()
{
    static ScratchStore scratch;
    static const bool filled = (scratch.fill(), true);
    Q_UNUSED(filled)
    return scratch;
}

int added = 0;

} // namespace

QVector<QByteArray> fuzzSeeds()
{
    orvex::SCHEDULE_DATA schedule;
    schedule.id = 3;
    schedule.version = 1;
    schedule.name = QStringLiteral("Новый");
    schedule.shifts = {{1, 0, {{1, 28800, 43200}}}};
    schedule.days = {{1, 0, 1, false}, {2, -1, -1, true}};
    orvex::SCHEDULE_CALENDAR_DAY day;
    day.date = QDate(2024, 2, 29);
    day.dayMode = orvex::DayByShift;
    day.shiftId = 1;
    const QDate first(2024, 1, 1);
    const QDate last(2024, 12, 31);
    const QList<orvex::_BLOB_DATA_RESQUEST> blobs{{2, QStringLiteral("PT_PHOTO"), {}}};
    return fuzz::numbered({writePayload(schedule), writePayload(schedule), writePayload(QList<quint32>{2}),
                           writePayload(QList<qint32>{1, 2}, first, last),
                           writePayload(qint32(1), first, last, QList<orvex::SCHEDULE_CALENDAR_DAY>{day}),
                           writePayload(blobs)});
}

extern "C" int LLVMFuzzerInitialize(int *, char ***)
{
    return fuzz::initialize();
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    int name = 0;
    QByteArray payload;
    if (!fuzz::split(data, size, int(std::size(Names)), name, payload))
        return 0;
    Command command({StoreRequestKind, Names[name]});
    command.setId(QUuid::createUuid());
    command.setPayload(payload);
    auto &database = scratchStore().database;
    const Command reply = database.execute(command);
    orvex::StorageChange change;
    fuzz::require(database.changes(change).ok(), "the feed can be read");
    fuzz::accepted += reply.isSuccess();
    fuzz::require(reply.isSuccess() || change.isEmpty(), "a rejected request changes nothing");
    fuzz::require(reply.result() != ResultStorageError && reply.result() != ResultNoConnection,
                  "an invalid request is not reported as a failure of the store");
    // From time to time the store is checked and replaced, so that it stays small.
    if ((added += change.schedules.size()) < 500)
        return 0;
    added = 0;
    QList<store::Fault> faults;
    fuzz::require(database.check(faults).ok() && faults.isEmpty(), "the store has no faults");
    scratchStore().recreate();
    scratchStore().fill();
    return 0;
}
