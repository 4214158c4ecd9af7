#include "calendardays.h"
#include "objects.h"
#include "schedules.h"
#include "tqdatastream.h"

#include <QFile>
#include <QtEndian>
#include <QtTest>

#include <limits>
#include <tuple>

#include <sys/resource.h>

namespace {

using CalendarReply = QHash<qint32, QList<orvex::SCHEDULE_CALENDAR_DAY>>;
using BlobReply = QHash<quint32, QHash<QString, QByteArray>>;

constexpr qint32 Lowest = std::numeric_limits<qint32>::min();
constexpr qint32 Highest = std::numeric_limits<qint32>::max();

/// One value of each type that is sent in a payload.
using Everything = std::tuple<orvex::SCHEDULE_DATA, CalendarReply, BlobReply, QList<quint32>, QStringList>;

QByteArray payloadOf(const Everything &everything)
{
    return std::apply([](const auto &...values) { return writePayload(values...); }, everything);
}

bool readFrom(const QByteArray &payload, Everything &everything)
{
    return std::apply([&payload](auto &...values) { return readPayload(payload, values...); }, everything);
}

/// Extreme and mostly different values, no empty list.
Everything filled()
{
    const orvex::SCHEDULE_DATA schedule{-1,
                                        QString(300, QChar(0x44f)),
                                        2,
                                        orvex::SchedulePersonal,
                                        QStringLiteral("#00ff7f"),
                                        QDate(2024, 2, 29),
                                        3,
                                        {{4, 5, 6, true}, {-1, -1, -1, false}},
                                        {{7, 8, {{9, Lowest, Highest}, {-1, 10, 11}}}, {12, 13, {}}},
                                        14,
                                        15,
                                        16,
                                        17,
                                        QStringLiteral("Смена 2/2"),
                                        0xfffffffe,
                                        std::numeric_limits<qint64>::max()};
    const orvex::SCHEDULE_CALENDAR_DAY day{
        std::numeric_limits<qint64>::min(), QDate(9999, 12, 31), 0xffffffff, 18, 19, 20, {{Highest, Lowest}, {21, 22}}};
    const QHash<QString, QByteArray> blobs{{QStringLiteral("PT_PHOTO"), QByteArray("\0\xff", 2)}, {{}, {}}};
    return {schedule,
            {{Lowest, {day, {}}}, {23, {}}},
            {{24, blobs}, {25, {}}},
            {1, 0xffffffff, 0},
            {QStringLiteral("Текст"), QString()}};
}

/// Limits the additional memory of the process, so that a list that trusts a corrupt count cannot be allocated. Returns
/// the previous limit.
rlimit limitMemory(quint64 more)
{
    rlimit before{};
    getrlimit(RLIMIT_AS, &before);
    QFile statm(QStringLiteral("/proc/self/statm"));
    if (!statm.open(QIODevice::ReadOnly))
        qFatal("The memory of the process is unknown");
    rlimit limit = before;
    limit.rlim_cur = statm.readAll().split(' ').first().toULongLong() * 4096 + more;
    if (setrlimit(RLIMIT_AS, &limit) != 0)
        qFatal("The memory of the process cannot be limited");
    return before;
}

#if defined(__SANITIZE_ADDRESS__)
constexpr quint64 SpareMemory = 1ULL << 50; // the sanitizer needs unlimited mappings
#else
constexpr quint64 SpareMemory = 64ULL * 1024 * 1024;
#endif

} // namespace

class TestStreams : public QObject
{
    Q_OBJECT

private slots:
    void shouldReadOnlyTheWholePayload()
    {
        for (const Everything &written : {filled(), Everything()}) {
            const QByteArray longer = payloadOf(written) + '\0';
            for (int size = 0; size <= longer.size(); ++size) {
                const bool isWhole = size == longer.size() - 1;
                Everything read = filled();
                QCOMPARE(readFrom(longer.left(size), read), isWhole);
                QVERIFY2(read == (isWhole ? written : Everything()), qPrintable(QString::number(size)));
            }
        }
    }

    /// Overwrites each position, counts included.
    void shouldRejectADamagedPayloadWithoutAllocatingMemory()
    {
        const QByteArray whole = payloadOf(filled());
        const rlimit before = limitMemory(SpareMemory);
        const auto restore = qScopeGuard([&before] { setrlimit(RLIMIT_AS, &before); });
        int rejected = 0;
        for (int at = 0; at + 4 <= whole.size(); ++at) {
            for (const quint32 value : {0x10000000U, 0x40000000U, 0x7fffffffU, 0x80000000U, 0xffffffffU, 9U}) {
                QByteArray damaged = whole;
                qToBigEndian(value, damaged.data() + at);
                Everything read = filled();
                if (readFrom(damaged, read))
                    continue;
                ++rejected;
                QVERIFY2(read == Everything(), qPrintable(QString::number(at)));
            }
        }
        QVERIFY(rejected > 0);
    }

    void shouldKeepDateAndRevisionOfAClearedDay()
    {
        orvex::SCHEDULE_CALENDAR_DAY day = std::get<CalendarReply>(filled()).value(Lowest).first();
        orvex::SCHEDULE_CALENDAR_DAY expected;
        expected.revision = day.revision;
        expected.date = day.date;
        day.clear();
        QVERIFY(day == expected);
    }
};

QTEST_GUILESS_MAIN(TestStreams)
#include "tst_streams.moc"
