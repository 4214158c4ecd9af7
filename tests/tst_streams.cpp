#include "calendardays.h"
#include "objects.h"
#include "schedules.h"
#include "tqdatastream.h"

#include <QFile>
#include <QRandomGenerator>
#include <QtEndian>
#include <QtTest>

#include <sys/resource.h>

namespace {

using CalendarReply = QHash<qint32, QList<orvex::SCHEDULE_CALENDAR_DAY>>;
using BlobReply = QHash<quint32, QHash<QString, QByteArray>>;

const QList<QDate> edgeDates = {{}, {2024, 2, 29}, {2026, 12, 31}, {1, 1, 1}, {9999, 12, 31}};

/// Random records of one run: any member may hold any value, lists may be empty.
class Records
{
public:
    explicit Records(quint32 seed)
        : m_random(seed)
    {
    }

    orvex::SCHEDULE_DATA schedule()
    {
        orvex::SCHEDULE_DATA record;
        record.id = number();
        record.name = text();
        record.state = number();
        record.type = orvex::ScheduleMode(m_random.bounded(5));
        record.color = text();
        record.startDate = date();
        record.useHolidays = number();
        for (int i = m_random.bounded(8); i > 0; --i)
            record.days.append({number(), number(), number(), m_random.bounded(2) == 1});
        for (int i = m_random.bounded(4); i > 0; --i)
            record.shifts.append(shift());
        record.freeStart = number();
        record.freeFinish = number();
        record.freeNorm = number();
        record.freeBreak = number();
        record.comment = text();
        record.workerId = m_random.generate();
        record.version = qint64(m_random.generate64());
        return record;
    }

    orvex::SCHEDULE_CALENDAR_DAY day()
    {
        orvex::SCHEDULE_CALENDAR_DAY record;
        record.revision = qint64(m_random.generate64());
        record.date = date();
        record.shiftId = m_random.generate();
        record.dayMode = number();
        record.overlayMode = number();
        record.storedMode = number();
        for (int i = m_random.bounded(3); i > 0; --i)
            record.intervals.append({number(), number()});
        return record;
    }

    CalendarReply calendar()
    {
        CalendarReply reply;
        for (int i = m_random.bounded(4); i > 0; --i) {
            auto &days = reply[number()];
            for (int k = m_random.bounded(4); k > 0; --k)
                days.append(day());
        }
        return reply;
    }

    BlobReply blobs()
    {
        BlobReply reply;
        for (int i = m_random.bounded(4); i > 0; --i)
            reply[m_random.generate()][text()] = text().toUtf8();
        return reply;
    }

    QStringList texts()
    {
        QStringList list;
        for (int i = m_random.bounded(4); i > 0; --i)
            list.append(text());
        return list;
    }

private:
    orvex::SCHEDULE_SHIFT shift()
    {
        orvex::SCHEDULE_SHIFT record;
        record.id = number();
        record.flags = number();
        for (int i = m_random.bounded(3); i > 0; --i)
            record.times.append({number(), number(), number()});
        return record;
    }

    qint32 number() { return m_random.bounded(3) == 0 ? -1 : qint32(m_random.generate()); }
    QDate date() { return edgeDates.at(m_random.bounded(edgeDates.size())); }
    QString text()
    {
        static const QStringList texts = {
            {}, QStringLiteral("Смена 2/2"), QString(300, QChar(0x44f)), QStringLiteral("#00ff7f")};
        return texts.at(m_random.bounded(texts.size()));
    }

    QRandomGenerator m_random;
};

/// One value of every shape that crosses the wire.
struct Everything
{
    orvex::SCHEDULE_DATA schedule;
    CalendarReply calendar;
    BlobReply blobs;
    QList<quint32> ids;
    QStringList texts;

    [[nodiscard]] QByteArray payload() const { return writePayload(schedule, calendar, blobs, ids, texts); }
    [[nodiscard]] bool read(const QByteArray &payload)
    {
        return readPayload(payload, schedule, calendar, blobs, ids, texts);
    }
    [[nodiscard]] bool isEmpty() const
    {
        return schedule == orvex::SCHEDULE_DATA() && calendar.isEmpty() && blobs.isEmpty() && ids.isEmpty()
            && texts.isEmpty();
    }
};

Everything anything(quint32 seed)
{
    Records records(seed);
    return {records.schedule(), records.calendar(), records.blobs(), {1, 0xffffffff, 0}, records.texts()};
}

/// With something in every list.
Everything everyListFilled()
{
    const auto full = [](const Everything &all) {
        const auto &shifts = all.schedule.shifts;
        const auto days = all.calendar.isEmpty() ? QList<orvex::SCHEDULE_CALENDAR_DAY>() : *all.calendar.cbegin();
        return !all.schedule.days.isEmpty() && !shifts.isEmpty() && !shifts.first().times.isEmpty() && !days.isEmpty()
            && !days.first().intervals.isEmpty() && !all.blobs.isEmpty() && !all.texts.isEmpty();
    };
    for (quint32 seed = 1;; ++seed) {
        Everything all = anything(seed);
        if (full(all))
            return all;
    }
}

/// For its life the process may map only so much more memory: a list that trusts a corrupt count fails to allocate.
class MemoryLimit
{
public:
    explicit MemoryLimit(quint64 more)
    {
        getrlimit(RLIMIT_AS, &m_before);
        QFile statm(QStringLiteral("/proc/self/statm"));
        if (!statm.open(QIODevice::ReadOnly))
            return;
        const quint64 pages = statm.readAll().split(' ').first().toULongLong();
        rlimit limit = m_before;
        limit.rlim_cur = pages * 4096 + more;
        m_set = setrlimit(RLIMIT_AS, &limit) == 0;
    }
    ~MemoryLimit() { setrlimit(RLIMIT_AS, &m_before); }
    Q_DISABLE_COPY(MemoryLimit)

    [[nodiscard]] bool isSet() const { return m_set; }

private:
    rlimit m_before{};
    bool m_set = false;
};

#if defined(__SANITIZE_ADDRESS__)
constexpr quint64 SpareMemory = 1ULL << 50; // the sanitizer's own mappings know no limit
#else
constexpr quint64 SpareMemory = 64ULL * 1024 * 1024;
#endif

} // namespace

class TestStreams : public QObject
{
    Q_OBJECT

private slots:
    void shouldReadBackWhatWasWritten()
    {
        for (quint32 seed = 1; seed <= 300; ++seed) {
            const Everything written = anything(seed);
            Everything read;
            QVERIFY(read.read(written.payload()));
            QVERIFY2(read.schedule == written.schedule, qPrintable(QString::number(seed)));
            QCOMPARE(read.calendar, written.calendar);
            QCOMPARE(read.blobs, written.blobs);
            QCOMPARE(read.ids, written.ids);
            QCOMPARE(read.texts, written.texts);
        }
    }

    void shouldDeliverNothingUnlessThePayloadEndsExactlyAtItsEnd()
    {
        const QByteArray whole = everyListFilled().payload();
        for (int size = 0; size < whole.size(); ++size) {
            Everything read = anything(8);
            QVERIFY2(!read.read(whole.left(size)), qPrintable(QString::number(size)));
            QVERIFY2(read.isEmpty(), qPrintable(QString::number(size)));
        }
        Everything read = anything(8);
        QVERIFY(!read.read(whole + '\0'));
        QVERIFY(read.isEmpty());
    }

    /// Every position of every count among them.
    void shouldSurviveAnyDamageToAPayload()
    {
        const QByteArray whole = everyListFilled().payload();
        const MemoryLimit limit(SpareMemory);
        QVERIFY(limit.isSet());
        int refused = 0;
        for (int at = 0; at + 4 <= whole.size(); ++at) {
            for (const quint32 value : {0x10000000U, 0x40000000U, 0x7fffffffU, 0x80000000U, 0xffffffffU, 9U}) {
                QByteArray damaged = whole;
                qToBigEndian(value, damaged.data() + at);
                Everything read = anything(8);
                if (read.read(damaged))
                    continue;
                ++refused;
                QVERIFY2(read.isEmpty(), qPrintable(QString::number(at)));
            }
        }
        QVERIFY(refused > 0);
    }

    void shouldKeepDateAndRevisionOfAClearedDay()
    {
        orvex::SCHEDULE_CALENDAR_DAY day = Records(3).day();
        day.revision = 42;
        day.date = QDate(2024, 2, 29);
        day.clear();
        orvex::SCHEDULE_CALENDAR_DAY expected;
        expected.revision = 42;
        expected.date = QDate(2024, 2, 29);
        QVERIFY(day == expected);
        QVERIFY(day.shiftId == 0 && day.dayMode == orvex::DayOff && day.intervals.isEmpty());
    }
};

QTEST_GUILESS_MAIN(TestStreams)
#include "tst_streams.moc"
