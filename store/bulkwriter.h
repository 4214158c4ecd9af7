#pragma once

#include "calendardays.h"
#include "outcome.h"
#include "schedules.h"

#include <QByteArray>
#include <QDate>
#include <QList>
#include <QString>

namespace store {

class Connection;
class Database;
class Query;

enum class UnitType
{
    Root, ///< the root of the tree; one per store
    Firm,
    Department,
};

struct Unit
{
    quint32 parent = 0; ///< 0: none (the root)
    UnitType type = UnitType::Department;
    QString name;
};

struct Employee
{
    QString name; ///< full name
    QString personnelNumber;
    QString position; ///< job title
    quint32 unit = 0; ///< 0: none
    quint32 schedule = 0; ///< main schedule; 0: none
    bool deleted = false;
};

/// A shift of the guide. Its intervals are in seconds from midnight, in working order.
struct GuideShift
{
    QString name;
    QString code;
    QString color; ///< `QColor::name()` text; empty: none
    QList<orvex::SCHEDULE_CALENDAR_INTERVAL> intervals;
};

/// A day of the production calendar.
struct ProductionDay
{
    QDate date;
    qint32 mode = orvex::DayHoliday; ///< `orvex::CalendarDayMode`
    QString note;
};

/// Writes many records in one transaction, without checking rights and without the request log. For tools that fill a
/// store.
///
/// After the first failure every call does nothing and returns 0, and `commit` returns that failure. A writer that is
/// destroyed without `commit` stores nothing.
class BulkWriter
{
public:
    /// Begins the transaction. \a database must be open and outlive the writer.
    explicit BulkWriter(Database &database);
    ~BulkWriter();
    Q_DISABLE_COPY(BulkWriter)

    // Each returns the identifier of the new record, or 0 after a failure. Units and employees share one sequence.

    quint32 addUnit(const Unit &unit);
    quint32 addEmployee(const Employee &employee);
    quint32 addGuideShift(const GuideShift &shift);
    /// Stores the record as an active schedule; the store assigns identifier, state and version.
    quint32 addSchedule(const orvex::SCHEDULE_DATA &schedule);

    /// The schedule of an employee in months without a personal one. Replaces the previous schedule; 0 removes it.
    void setMainSchedule(quint32 employee, quint32 schedule);
    /// Stores a blob of a unit or an employee, such as "PT_PHOTO". Replaces a blob of the same name.
    void setBlob(quint32 object, const QString &name, const QByteArray &data);
    /// Replaces the day of the same date.
    void setProductionDay(const ProductionDay &day);
    /// Adds or replaces days, whatever their revisions. If a date occurs twice, its first record counts.
    void setCalendarDays(quint32 schedule, const QList<orvex::SCHEDULE_CALENDAR_DAY> &days);

    /// The first failure, or success.
    [[nodiscard]] const Outcome &failure() const { return m_outcome; }
    /// Stores everything or nothing.
    [[nodiscard]] Outcome commit();

private:
    [[nodiscard]] quint32 newObject(const QString &kind);
    /// Runs a writing statement and keeps its failure.
    bool run(Query &query);

    Connection *m_connection = nullptr; ///< null if the database is not open
    Outcome m_outcome;
    bool m_begun = false;
};

} // namespace store
