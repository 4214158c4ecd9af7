#include "scratchstore.h"

#include "bulkwriter.h"
#include "target.h"

#include <QFileInfo>

ScratchStore::ScratchStore()
{
    recreate();
}

void ScratchStore::recreate()
{
    const QString memory = QStringLiteral("/dev/shm");
    database.close();
    m_folder = QFileInfo(memory).isWritable() ? std::make_unique<QTemporaryDir>(memory + QStringLiteral("/orvex-fuzz-"))
                                              : std::make_unique<QTemporaryDir>();
    const auto address = store::StoreAddress::file(m_folder->filePath(QStringLiteral("store.db")));
    fuzz::require(store::Database::create(address).ok() && database.open(address).ok(),
                  "an empty store can be created");
}

void ScratchStore::fill()
{
    store::BulkWriter writer(database);
    const quint32 shift = writer.addGuideShift({QStringLiteral("День"), QStringLiteral("Д"), {}, {{28800, 61200}}});
    const quint32 root = writer.addUnit({0, store::UnitType::Root, QStringLiteral("Орг")});
    const quint32 employee = writer.addEmployee({QStringLiteral("Иванов \"И\""), {}, {}, root, 0, false});
    writer.setBlob(employee, QStringLiteral("PT_PHOTO"), "photo");
    orvex::SCHEDULE_DATA schedule;
    schedule.name = QStringLiteral("График");
    schedule.shifts = {{1, 0, {{1, 28800, 43200}}}};
    schedule.days = {{1, 0, 1, false}, {2, -1, -1, true}};
    writer.addSchedule(schedule);
    const quint32 id = writer.addSchedule(schedule);
    writer.addSchedule(schedule);
    orvex::SCHEDULE_CALENDAR_DAY day;
    day.date = QDate(2024, 2, 29);
    day.dayMode = orvex::DayByShift;
    day.shiftId = shift;
    writer.setCalendarDays(id, {day});
    writer.setMainSchedule(employee, id);
    writer.setProductionDay({QDate(2024, 1, 1), orvex::DayHoliday, {}});
    orvex::StorageChange all;
    fuzz::require(writer.commit().ok() && database.snapshot(all).ok(), "the store can be filled");
}
