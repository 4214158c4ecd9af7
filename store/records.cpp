#include "records.h"

#include "connection.h"
#include "datanames.h"
#include "log.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>

namespace store::records {

namespace {

// Keys of the JSON columns; the views for reports use them too.
constexpr QLatin1String DaysKey = orvex::latin1("days");
constexpr QLatin1String ShiftsKey = orvex::latin1("shifts");
constexpr QLatin1String TimesKey = orvex::latin1("times");
constexpr QLatin1String IdKey = orvex::latin1("id");
constexpr QLatin1String ShiftKey = orvex::latin1("shift");
constexpr QLatin1String OffKey = orvex::latin1("off");
constexpr QLatin1String FlagsKey = orvex::latin1("flags");
constexpr QLatin1String StartKey = orvex::latin1("start");
constexpr QLatin1String FinishKey = orvex::latin1("finish");

/// Keeps valid and unique identifiers and replaces the others.
class Numbering
{
public:
    template <class List> explicit Numbering(const List &list)
    {
        for (const auto &element : list) {
            if (isValid(element.id))
                m_last = std::max(m_last, element.id);
        }
    }
    void number(qint32 &id)
    {
        if (!isValid(id) || m_used.contains(id))
            id = ++m_last;
        m_used.insert(id);
    }

private:
    static bool isValid(qint32 id) { return id > 0 && id < 0x40000000; }

    qint32 m_last = 0;
    QSet<qint32> m_used;
};

/// The name of a type or a parameter; all objects share one copy.
QString sharedName(QLatin1String name)
{
    static const QHash<QLatin1String, QString> names = [] {
        QHash<QLatin1String, QString> all;
        for (const QLatin1String known :
             {db::orgstructure::SUBJECTROOT, db::orgstructure::FIRM, db::orgstructure::DEPARTMENT,
              db::orgstructure::WORKER, db::guide::SHIFT, db::guide::INTERVAL, db::param::NAME, db::param::CODE,
              db::param::COLOR, db::param::OBJECTSTATE, db::param::WORKERNUM, db::param::SCHEDULE, db::param::POSITION,
              db::param::PARENT, db::param::INTERVALS, db::param::START, db::param::FINISH})
            all.insert(known, known);
        return all;
    }();
    return names.value(name, name);
}

orvex::ObjectInfo object(QLatin1String type, quint32 id)
{
    orvex::ObjectInfo info;
    info.type = sharedName(type);
    info.id = id;
    return info;
}

void set(orvex::ObjectInfo &info, QLatin1String name, const QString &value)
{
    info.parameters.insert(sharedName(name), value);
}

QString idText(quint32 id)
{
    return id == 0 ? QString() : QString::number(id);
}

QJsonObject shiftObject(const orvex::SCHEDULE_SHIFT &shift)
{
    QJsonArray times;
    for (const auto &time : shift.times)
        times.append(QJsonObject{{IdKey, time.id}, {StartKey, time.start}, {FinishKey, time.finish}});
    return {{IdKey, shift.id}, {FlagsKey, shift.flags}, {TimesKey, times}};
}

orvex::SCHEDULE_SHIFT shiftFrom(const QJsonObject &object)
{
    orvex::SCHEDULE_SHIFT shift;
    shift.id = object.value(IdKey).toInt();
    shift.flags = object.value(FlagsKey).toInt();
    for (const auto &value : object.value(TimesKey).toArray()) {
        const QJsonObject time = value.toObject();
        shift.times.append({time.value(IdKey).toInt(), time.value(StartKey).toInt(), time.value(FinishKey).toInt()});
    }
    return shift;
}

orvex::SCHEDULE_DAY dayFrom(const QJsonObject &object, const QList<orvex::SCHEDULE_SHIFT> &shifts)
{
    orvex::SCHEDULE_DAY day;
    day.id = object.value(IdKey).toInt();
    const int shift = object.value(ShiftKey).toInt(-1);
    if (shift >= 0 && shift < shifts.size()) {
        day.shift = shift;
        day.shiftId = shifts.at(shift).id;
    }
    day.dayOff = object.value(OffKey).toBool();
    return day;
}

} // namespace

orvex::SCHEDULE_DATA schedule(const Query &row, TextPool &pool)
{
    orvex::SCHEDULE_DATA schedule;
    int column = 0;
    schedule.id = row.number(column++);
    schedule.name = row.text(column++);
    schedule.state = row.number(column++);
    schedule.type = orvex::ScheduleMode(row.number(column++));
    schedule.color = pool.shared(row.text(column++));
    schedule.startDate = row.date(column++);
    schedule.useHolidays = row.number(column++);
    schedule.freeStart = row.number(column++);
    schedule.freeFinish = row.number(column++);
    schedule.freeNorm = row.number(column++);
    schedule.freeBreak = row.number(column++);
    schedule.comment = pool.shared(row.text(column++));
    schedule.workerId = row.id(column++);
    schedule.version = row.bigNumber(column++);
    if (const QString mode = row.text(column++); !mode.isEmpty() && !readMode(mode, schedule))
        qCWarning(storeLog) << "unreadable work mode of schedule" << schedule.id;
    return schedule;
}

void bindSchedule(Query &query, const orvex::SCHEDULE_DATA &schedule, const Connection &connection)
{
    query.bind(":name", schedule.name)
        .bind(":type", schedule.type)
        .bind(":color", schedule.color.toLower())
        .bindDate(":start_date", schedule.startDate)
        .bind(":use_holidays", schedule.useHolidays)
        .bind(":free_start", schedule.freeStart)
        .bind(":free_finish", schedule.freeFinish)
        .bind(":free_norm", schedule.freeNorm)
        .bind(":free_break", schedule.freeBreak)
        .bind(":comment", schedule.comment)
        .bindReference(":worker_id", schedule.workerId)
        .bind(":mode", modeText(schedule))
        .bind(":login", connection.driver().login())
        .bind(":now", connection.now());
}

orvex::SCHEDULE_DATA withIdentifiers(orvex::SCHEDULE_DATA schedule)
{
    Numbering shifts(schedule.shifts);
    for (auto &shift : schedule.shifts) {
        shifts.number(shift.id);
        Numbering times(shift.times);
        for (auto &time : shift.times)
            times.number(time.id);
    }
    Numbering days(schedule.days);
    for (auto &day : schedule.days) {
        days.number(day.id);
        day.shiftId = day.shift < 0 ? -1 : schedule.shifts.at(day.shift).id;
    }
    return schedule;
}

QString modeText(const orvex::SCHEDULE_DATA &schedule)
{
    if (schedule.days.isEmpty() && schedule.shifts.isEmpty())
        return {};
    QJsonArray days;
    for (const auto &day : schedule.days)
        days.append(QJsonObject{{IdKey, day.id}, {ShiftKey, day.shift}, {OffKey, day.dayOff}});
    QJsonArray shifts;
    for (const auto &shift : schedule.shifts)
        shifts.append(shiftObject(shift));
    const QJsonDocument document(QJsonObject{{DaysKey, days}, {ShiftsKey, shifts}});
    return QString::fromUtf8(document.toJson(QJsonDocument::Compact));
}

bool readMode(const QString &text, orvex::SCHEDULE_DATA &schedule)
{
    const QJsonDocument document = QJsonDocument::fromJson(text.toUtf8());
    if (!document.isObject())
        return false;
    const QJsonObject mode = document.object();
    QList<orvex::SCHEDULE_SHIFT> shifts;
    for (const auto &value : mode.value(ShiftsKey).toArray())
        shifts.append(shiftFrom(value.toObject()));
    QList<orvex::SCHEDULE_DAY> days;
    for (const auto &value : mode.value(DaysKey).toArray())
        days.append(dayFrom(value.toObject(), shifts));
    schedule.shifts = shifts;
    schedule.days = days;
    return true;
}

QString intervalsText(const QList<orvex::SCHEDULE_CALENDAR_INTERVAL> &intervals)
{
    if (intervals.isEmpty())
        return {};
    QJsonArray array;
    for (const auto &interval : intervals)
        array.append(QJsonArray{interval.start, interval.finish});
    return QString::fromUtf8(QJsonDocument(array).toJson(QJsonDocument::Compact));
}

QList<orvex::SCHEDULE_CALENDAR_INTERVAL> intervals(const QString &text)
{
    QList<orvex::SCHEDULE_CALENDAR_INTERVAL> intervals;
    if (text.isEmpty())
        return intervals;
    for (const auto &value : QJsonDocument::fromJson(text.toUtf8()).array()) {
        const QJsonArray pair = value.toArray();
        intervals.append({pair.at(0).toInt(), pair.at(1).toInt()});
    }
    return intervals;
}

orvex::SCHEDULE_CALENDAR_DAY calendarDay(const Query &row)
{
    orvex::SCHEDULE_CALENDAR_DAY day;
    day.date = row.date(0);
    day.shiftId = row.id(1);
    day.dayMode = row.number(2);
    day.intervals = intervals(row.text(3));
    day.revision = row.bigNumber(4);
    return day;
}

orvex::ObjectInfo subject(const Query &row, TextPool &pool)
{
    orvex::ObjectInfo info = object(db::orgstructure::WORKER, row.id(0));
    set(info, db::param::NAME, row.text(1));
    set(info, db::param::WORKERNUM, row.text(2));
    set(info, db::param::POSITION, pool.shared(row.text(3)));
    set(info, db::param::PARENT, pool.shared(idText(row.id(4))));
    set(info, db::param::SCHEDULE, pool.shared(idText(row.id(5))));
    set(info, db::param::OBJECTSTATE, row.text(6));
    return info;
}

orvex::ObjectInfo unit(const Query &row)
{
    static const QHash<QString, QLatin1String> types{{QStringLiteral("root"), db::orgstructure::SUBJECTROOT},
                                                     {QStringLiteral("firm"), db::orgstructure::FIRM},
                                                     {QStringLiteral("department"), db::orgstructure::DEPARTMENT}};
    orvex::ObjectInfo info = object(types.value(row.text(2)), row.id(0));
    set(info, db::param::PARENT, idText(row.id(1)));
    set(info, db::param::NAME, row.text(3));
    set(info, db::param::OBJECTSTATE, row.text(4));
    return info;
}

orvex::ObjectInfo shift(const Query &row, const QStringList &intervals)
{
    orvex::ObjectInfo info = object(db::guide::SHIFT, row.id(0));
    set(info, db::param::NAME, row.text(1));
    set(info, db::param::CODE, row.text(2));
    set(info, db::param::COLOR, row.text(3));
    set(info, db::param::OBJECTSTATE, row.text(4));
    set(info, db::param::INTERVALS, intervals.join(QLatin1Char(',')));
    return info;
}

orvex::ObjectInfo interval(const Query &row)
{
    orvex::ObjectInfo info = object(db::guide::INTERVAL, row.id(0));
    set(info, db::param::START, row.text(1));
    set(info, db::param::FINISH, row.text(2));
    return info;
}

} // namespace store::records
