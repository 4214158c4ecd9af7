#include "target.h"

#include "calendardays.h"
#include "objects.h"
#include "records.h"
#include "schedules.h"
#include "scheduleutil.h"
#include "tqdatastream.h"
#include "validation.h"

#include <tuple>

// Every payload of a request or a reply, and the JSON columns. The first byte selects the reader.

namespace {

using Days = QList<orvex::SCHEDULE_CALENDAR_DAY>;

/// Runs the calculations on a valid record.
void exercise(const orvex::SCHEDULE_DATA &schedule)
{
    if (!store::Validation::fault(schedule).isEmpty())
        return;
    for (const auto &shift : schedule.shifts)
        fuzz::require(shift.start() >= 0 && shift.finish() >= 0 && shift.break_time() >= 0, "times are not negative");
    (void)store::records::modeText(store::records::withIdentifiers(schedule));
}

void exercise(const Days &days)
{
    static const orvex::ObjectHash none;
    for (const auto &day : days) {
        if (!store::Validation::fault(day).isEmpty())
            continue;
        fuzz::require(ScheduleUtil::dayNormTime(day, &none, &none) >= 0
                          && ScheduleUtil::dayNightTime(day, &none, &none) >= 0,
                      "times are not negative");
        (void)ScheduleUtil::dayBreakTime(day, &none, &none);
        (void)ScheduleUtil::isHoliday(day);
    }
}

template <class T> void exercise(const T &) { }

/// A rejected payload must leave the values unchanged; an accepted one must be readable after writing it again.
template <class... T> void read(const QByteArray &payload)
{
    std::tuple<T...> values;
    const bool accepted = std::apply([&](auto &...value) { return readPayload(payload, value...); }, values);
    const QByteArray written = std::apply([](auto &...value) { return writePayload(value...); }, values);
    if (!accepted) {
        fuzz::require(written == writePayload(T{}...), "a rejected payload changes no value");
        return;
    }
    std::tuple<T...> again;
    const bool acceptedAgain = std::apply([&](auto &...value) { return readPayload(written, value...); }, again);
    fuzz::require(acceptedAgain, "an accepted payload can be written and read again");
    std::apply([](auto &...value) { (exercise(value), ...); }, values);
    ++fuzz::accepted;
}

void readMode(const QByteArray &text)
{
    orvex::SCHEDULE_DATA schedule;
    if (!store::records::readMode(QString::fromUtf8(text), schedule)) {
        fuzz::require(schedule == orvex::SCHEDULE_DATA(), "a rejected work mode changes nothing");
        return;
    }
    schedule.name = QStringLiteral("x");
    exercise(schedule);
    orvex::SCHEDULE_DATA again;
    const QString mode = store::records::modeText(schedule);
    fuzz::require(mode.isEmpty() || store::records::readMode(mode, again), "a work mode can be written and read again");
    ++fuzz::accepted;
}

void readIntervals(const QByteArray &text)
{
    orvex::SCHEDULE_CALENDAR_DAY day;
    day.date = QDate(2024, 2, 29);
    day.intervals = store::records::intervals(QString::fromUtf8(text));
    exercise(Days{day});
    ++fuzz::accepted;
}

using Reader = void (*)(const QByteArray &);

const Reader Readers[] = {
    read<orvex::SCHEDULE_DATA>,
    read<QList<quint32>>,
    read<QList<qint32>, QDate, QDate>,
    read<qint32, QDate, QDate, Days>,
    read<QList<orvex::_BLOB_DATA_RESQUEST>>,
    read<QList<qint32>, QDate, QDate, QHash<qint32, Days>>,
    read<QHash<quint32, QHash<QString, QByteArray>>>,
    read<QString, QString>,
    read<qint32>,
    readMode,
    readIntervals,
};

} // namespace

QVector<QByteArray> fuzzSeeds()
{
    orvex::SCHEDULE_DATA schedule;
    schedule.name = QStringLiteral("Пятидневка");
    schedule.startDate = QDate(2024, 2, 29);
    schedule.shifts = {{1, 0, {{1, 28800, 43200}, {2, 46800, 61200}}}, {2, 5, {{1, 72000, 28800}}}};
    schedule.days = {{1, 0, 1, false}, {2, 1, 2, false}, {3, -1, -1, true}};
    orvex::SCHEDULE_CALENDAR_DAY day;
    day.date = QDate(2024, 2, 29);
    day.dayMode = orvex::DayByShift;
    day.shiftId = 3;
    day.intervals = {{0, 3600}, {72000, 28800}};
    const Days days{day, {}, day};
    const QDate first(2024, 1, 1);
    const QDate last(2024, 12, 31);
    const QList<orvex::_BLOB_DATA_RESQUEST> blobs{{1, QStringLiteral("PT_PHOTO"), QByteArray(16, 'm')}};
    return fuzz::numbered({
        writePayload(schedule),
        writePayload(QList<quint32>{1, 2, 3}),
        writePayload(QList<qint32>{1, 2}, first, last),
        writePayload(qint32(1), first, last, days),
        writePayload(blobs),
        writePayload(QList<qint32>{1}, first, last, QHash<qint32, Days>{{1, days}}),
        writePayload(QHash<quint32, QHash<QString, QByteArray>>{{1, {{QStringLiteral("PT_PHOTO"), "data"}}}}),
        writePayload(QStringLiteral("Текст"), QStringLiteral("Совет")),
        writePayload(qint32(7)),
        store::records::modeText(schedule).toUtf8(),
        store::records::intervalsText(day.intervals).toUtf8(),
    });
}

extern "C" int LLVMFuzzerInitialize(int *, char ***)
{
    return fuzz::initialize();
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    int reader = 0;
    QByteArray input;
    if (fuzz::split(data, size, int(std::size(Readers)), reader, input))
        Readers[reader](input);
    return 0;
}
