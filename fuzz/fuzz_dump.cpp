#include "scratchstore.h"
#include "target.h"

#include "bulkwriter.h"

#include <QBuffer>

// Dump documents.

namespace {

QByteArray dumped(store::Database &database)
{
    QBuffer document;
    document.open(QIODevice::WriteOnly);
    fuzz::require(database.dump(document).ok(), "a store can be dumped");
    return document.data();
}

QByteArray goodDocument()
{
    ScratchStore scratch;
    store::BulkWriter writer(scratch.database);
    const quint32 shift = writer.addGuideShift({QStringLiteral("День"), QStringLiteral("Д"), {}, {{28800, 61200}}});
    const quint32 root = writer.addUnit({0, store::UnitType::Root, QStringLiteral("Орг")});
    const quint32 worker = writer.addEmployee({QStringLiteral("Иванов \"И\""), {}, {}, root, 0, false});
    writer.setBlob(worker, QStringLiteral("PT_PHOTO"), "photo");
    orvex::SCHEDULE_DATA schedule;
    schedule.name = QStringLiteral("График");
    schedule.shifts = {{1, 0, {{1, 28800, 43200}}}};
    schedule.days = {{1, 0, 1, false}, {2, -1, -1, true}};
    const quint32 id = writer.addSchedule(schedule);
    orvex::SCHEDULE_CALENDAR_DAY day;
    day.date = QDate(2024, 2, 29);
    day.dayMode = orvex::DayByShift;
    day.shiftId = shift;
    writer.setCalendarDays(id, {day});
    writer.setMainSchedule(worker, id);
    writer.setProductionDay({QDate(2024, 1, 1), orvex::DayHoliday, {}});
    fuzz::require(writer.commit().ok(), "the store can be filled");
    return dumped(scratch.database);
}

} // namespace

QVector<QByteArray> fuzzSeeds()
{
    static const QByteArray good = goodDocument();
    return {good, QByteArray(good).replace("\n", "").replace("  ", "")};
}

extern "C" int LLVMFuzzerInitialize(int *, char ***)
{
    return fuzz::begin();
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static auto *scratch = new ScratchStore;
    static const QByteArray empty = dumped(scratch->database);
    QByteArray document(reinterpret_cast<const char *>(data), int(size));
    QBuffer buffer(&document);
    buffer.open(QIODevice::ReadOnly);
    const auto outcome = scratch->database.load(buffer);
    if (!outcome.ok()) {
        fuzz::require(outcome.code == ResultInvalidData, "foreign bytes are no fault of the store");
        fuzz::require(!outcome.text.isEmpty(), "a refusal says why");
        fuzz::require(dumped(scratch->database) == empty, "a refused document loads nothing");
        return 0;
    }
    ++fuzz::accepted;
    QList<store::Fault> faults;
    fuzz::require(scratch->database.check(faults).ok() && faults.isEmpty(), "what was loaded has no faults");
    scratch->renew();
    return 0;
}
