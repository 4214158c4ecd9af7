#include "scratchstore.h"
#include "target.h"

#include "calendardays.h"
#include "requests.h"
#include "tqdatastream.h"

// Requests with a foreign payload, against a store. The first byte says which request it is.

namespace {

const QLatin1String Names[] = {
    request::AddSchedule,         request::UpdateSchedule,         request::RemoveSchedules,
    request::GetScheduleCalendar, request::UpdateScheduleCalendar, request::GetBlobDataChange};

ScratchStore &scratchStore()
{
    static auto *scratch = [] {
        auto *made = new ScratchStore;
        made->fill();
        return made;
    }();
    return *scratch;
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
    return fuzz::begin();
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
    fuzz::require(reply.isSuccess() || change.isEmpty(), "a refused request changes nothing");
    fuzz::require(reply.result() != ResultStorageError && reply.result() != ResultNoConnection,
                  "foreign bytes are no fault of the store");
    // Now and then everything in it is looked at, and the store does not grow without end.
    if ((added += change.schedules.size()) < 500)
        return 0;
    added = 0;
    QList<store::Fault> faults;
    fuzz::require(database.check(faults).ok() && faults.isEmpty(), "the store holds nothing that it must not hold");
    scratchStore().renew();
    scratchStore().fill();
    return 0;
}
