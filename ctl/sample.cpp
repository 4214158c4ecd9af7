#include "sample.h"

#include "avatar.h"
#include "bulkwriter.h"
#include "datanames.h"
#include "people.h"
#include "productiondays.h"
#include "sampledata.h"
#include "scheduleutil.h"

#include <QBuffer>
#include <QHash>
#include <QLocale>

#include <algorithm>
#include <numeric>
#include <utility>

namespace {

constexpr quint32 Seed = 1703;
constexpr int LargestTeam = 40;
constexpr int FormerEmployees = 2;

/// Splits \a total in proportion to \a weights; the parts add up to \a total.
QList<int> split(int total, const QList<int> &weights)
{
    const int all = std::accumulate(weights.cbegin(), weights.cend(), 0);
    QList<int> counts;
    qint64 reached = 0;
    int assigned = 0;
    for (const int weight : weights) {
        reached += weight;
        const int upTo = int((reached * total + all / 2) / all);
        counts.append(upTo - assigned);
        assigned = upTo;
    }
    return counts;
}

/// The first of \a list for the head of a unit (position 0), the others in turn for the other employees.
QString pickInTurn(const QStringList &list, int position)
{
    return position == 0 || list.size() == 1 ? list.first() : list.at(1 + (position - 1) % (list.size() - 1));
}

QByteArray png(const QImage &image)
{
    QByteArray data;
    QBuffer buffer(&data);
    if (!buffer.open(QIODevice::WriteOnly) || !image.save(&buffer, "PNG"))
        qFatal("cannot encode a photo as PNG");
    return data;
}

class SampleWriter
{
public:
    SampleWriter(store::Database &database, const SampleSize &size, const QDate &today)
        : m_writer(database)
        , m_size(size)
        , m_today(today)
        , m_data(SampleData::load(today.year()))
        , m_random(Seed)
    {
    }

    store::Outcome write()
    {
        addGuide();
        addCommonSchedules();
        addProductionDays();
        addUnits();
        addEmployees();
        addPersonalSchedules();
        return m_writer.commit();
    }

    [[nodiscard]] const SampleCounts &counts() const { return m_counts; }

private:
    struct Employee
    {
        quint32 id = 0;
        QString name;
        int schedule = 0; ///< position in the sample's schedules
        int offset = 0; ///< days by which the cycle starts before `SampleData::cycleStart`
    };

    void addGuide()
    {
        for (const auto &shift : std::as_const(m_data.shifts))
            m_shiftIds.append(m_writer.addGuideShift(shift));
        m_counts.shifts = m_shiftIds.size();
    }

    void addCommonSchedules()
    {
        for (const auto &schedule : std::as_const(m_data.schedules)) {
            const quint32 id = m_writer.addSchedule(schedule.record);
            m_scheduleIds.append(id);
            if (schedule.record.type != orvex::ScheduleCalendar)
                continue;
            const QDate first = schedule.record.startDate;
            m_writer.setCalendarDays(
                id, daysByCycle(schedule.cycle, m_shiftIds, m_data.cycleStart, first, ScheduleUtil::lastOfYear(first)));
        }
        m_counts.commonSchedules = m_scheduleIds.size();
    }

    void addProductionDays()
    {
        for (const int year : {m_today.year(), m_today.year() + 1}) {
            const auto days = productionDays(year);
            for (const auto &day : days)
                m_writer.setProductionDay(day);
        }
    }

    quint32 addUnit(quint32 parent, store::UnitType type, const QString &name)
    {
        ++m_counts.units;
        return m_writer.addUnit({parent, type, name});
    }

    void addUnits()
    {
        const quint32 root = addUnit(0, store::UnitType::Root, m_data.root);
        const quint32 firm = addUnit(root, store::UnitType::Firm, m_data.firm);
        for (const auto &unit : std::as_const(m_data.units)) {
            const quint32 parent = unit.parent.isEmpty() ? firm : m_unitIds.value(unit.parent);
            m_unitIds.insert(unit.name, addUnit(parent, store::UnitType::Department, unit.name));
        }
    }

    void addEmployees()
    {
        m_numbers.resize(m_size.employees + FormerEmployees);
        std::iota(m_numbers.begin(), m_numbers.end(), 101);
        std::shuffle(m_numbers.begin(), m_numbers.end(), m_random);
        QList<int> weights;
        for (const auto &unit : std::as_const(m_data.units))
            weights.append(unit.weight);
        const QList<int> staff = split(m_size.employees, weights);
        for (int i = 0; i < staff.size(); ++i)
            staffUnit(m_data.units.at(i), staff.at(i));
        for (int i = 0; i < FormerEmployees; ++i)
            addEmployee(m_data.units.last(), m_unitIds.value(m_data.units.last().name), i + 1, true);
        m_counts.employees = m_employees.size();
    }

    /// Adds the employees of a unit; a unit larger than one team gets teams below it.
    void staffUnit(const SampleUnit &unit, int count)
    {
        const quint32 id = m_unitIds.value(unit.name);
        const int teams = count > LargestTeam ? (count + LargestTeam - 1) / LargestTeam : 0;
        QList<quint32> teamIds;
        for (int team = 1; team <= teams; ++team)
            teamIds.append(
                addUnit(id, store::UnitType::Department, QStringLiteral("%1, группа %2").arg(unit.name).arg(team)));
        for (int i = 0; i < count; ++i)
            addEmployee(unit, i == 0 || teams == 0 ? id : teamIds.at(i % teams), i, false);
    }

    void addEmployee(const SampleUnit &unit, quint32 unitId, int position, bool deleted)
    {
        const auto person = m_people.next(m_random);
        const int schedule = scheduleIndex(pickInTurn(unit.schedules, position));
        store::Employee record;
        record.name = person.name;
        record.personnelNumber = QStringLiteral("%1").arg(m_numbers.takeLast(), 5, 10, QLatin1Char('0'));
        record.position = pickInTurn(unit.positions, position);
        record.unit = unitId;
        record.schedule = m_scheduleIds.at(schedule);
        record.deleted = deleted;
        const quint32 id = m_writer.addEmployee(record);
        const quint32 face = m_random.generate();
        if (m_counts.photos < SampleSize::MaxPhotos) {
            m_writer.setBlob(id, db::param::PHOTO, png(drawAvatar(person.sex, face)));
            ++m_counts.photos;
        }
        if (!deleted)
            m_employees.append({id, person.name, schedule, cycleOffset(schedule)});
    }

    [[nodiscard]] int scheduleIndex(const QString &name) const
    {
        for (int i = 0; i < m_data.schedules.size(); ++i) {
            if (m_data.schedules.at(i).record.name == name)
                return i;
        }
        Q_ASSERT_X(false, "sample", "a unit names an unknown schedule");
        return 0;
    }

    /// Shift crews replace each other, so their cycles start on different days; other cycles start together.
    int cycleOffset(int schedule)
    {
        const auto &sample = m_data.schedules.at(schedule);
        const bool crews = sample.record.type == orvex::ScheduleShift || sample.record.type == orvex::ScheduleCalendar;
        if (!crews || sample.cycle.isEmpty())
            return 0;
        const bool weeks = sample.cycle.size() % 7 == 0;
        return weeks ? 7 * m_random.bounded(sample.cycle.size() / 7) : m_random.bounded(sample.cycle.size());
    }

    void addPersonalSchedules()
    {
        const QDate thisMonth(m_today.year(), m_today.month(), 1);
        const QDate last = m_size.months == 1 ? thisMonth : thisMonth.addMonths(1);
        const QDate first = last.addMonths(1 - m_size.months);
        for (int year = first.year(); year <= last.year() + 1; ++year) {
            const auto days = productionDays(year);
            for (const auto &day : days)
                m_modes.insert(day.date, day.mode);
        }
        for (const auto &employee : std::as_const(m_employees)) {
            if (!worksByPersonalSchedule(employee))
                continue;
            for (QDate month = first; month <= last && m_writer.failure().ok(); month = month.addMonths(1))
                addPersonalSchedule(employee, month);
        }
    }

    bool worksByPersonalSchedule(const Employee &employee)
    {
        const auto &sample = m_data.schedules.at(employee.schedule);
        if (sample.cycle.isEmpty())
            return false;
        return m_random.bounded(100) < (sample.record.type == orvex::ScheduleFixed ? 25 : 80);
    }

    void addPersonalSchedule(const Employee &employee, const QDate &month)
    {
        static const QStringList colors = {{},
                                           {},
                                           {},
                                           QStringLiteral("#ffcc80"),
                                           QStringLiteral("#a5d6a7"),
                                           QStringLiteral("#90caf9"),
                                           QStringLiteral("#f48fb1")};
        orvex::SCHEDULE_DATA record;
        record.name = QStringLiteral("%1 %2 %3")
                          .arg(employee.name, m_locale.standaloneMonthName(month.month()))
                          .arg(month.year());
        record.type = orvex::SchedulePersonal;
        record.state = orvex::ScheduleStateActive;
        record.color = colors.at(m_random.bounded(colors.size()));
        record.startDate = month;
        record.workerId = employee.id;
        m_writer.setCalendarDays(m_writer.addSchedule(record), personalDays(employee, month));
        ++m_counts.personalSchedules;
    }

    QList<orvex::SCHEDULE_CALENDAR_DAY> personalDays(const Employee &employee, const QDate &month)
    {
        const auto &sample = m_data.schedules.at(employee.schedule);
        auto days = daysByCycle(sample.cycle, m_shiftIds, m_data.cycleStart.addDays(-employee.offset), month,
                                ScheduleUtil::lastOfMonth(month));
        const bool onLeave = m_random.bounded(100) < 12;
        const int leaveFrom = onLeave ? m_random.bounded(15) : days.size();
        const int leaveTo = leaveFrom + 14;
        for (int i = 0; i < days.size(); ++i) {
            auto &day = days[i];
            const qint32 mode = m_modes.value(day.date, orvex::DayByShift);
            const bool holiday = mode == orvex::DayHoliday || mode == orvex::DayOff;
            if ((i >= leaveFrom && i < leaveTo) || (holiday && sample.record.type == orvex::ScheduleFixed))
                day.clear();
        }
        return days;
    }

    store::BulkWriter m_writer;
    SampleSize m_size;
    QDate m_today;
    SampleData m_data;
    People m_people;
    QRandomGenerator m_random;
    QLocale m_locale{QLocale::Russian, QLocale::Russia};
    QList<quint32> m_shiftIds; ///< in the order of the sample data
    QList<quint32> m_scheduleIds; ///< in the order of the sample data
    QHash<QString, quint32> m_unitIds;
    QVector<int> m_numbers; ///< unused personnel numbers
    QList<Employee> m_employees; ///< current ones
    QHash<QDate, qint32> m_modes; ///< of the production calendar
    SampleCounts m_counts;
};

} // namespace

store::Outcome writeSample(store::Database &database, const SampleSize &size, const QDate &today, SampleCounts &counts)
{
    SampleWriter writer(database, size, today);
    store::Outcome outcome = writer.write();
    counts = writer.counts();
    return outcome;
}
