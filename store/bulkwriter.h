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
    quint32 unit = 0; ///< where the employee works; 0: nowhere
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

/// Writes many records in one transaction, without rights and request log: for the tools that fill a store.
///
/// The first failure ends it: later calls do nothing and give 0, `commit` tells what it was. A writer that is destroyed
/// without `commit` has written nothing.
class BulkWriter
{
public:
    /// Begins the transaction. \a database is open and outlives the writer.
    explicit BulkWriter(Database &database);
    ~BulkWriter();
    Q_DISABLE_COPY(BulkWriter)

    /// Each gives the identifier of the new record, 0 after a failure. Units and employees share one row of numbers.
    quint32 addUnit(const Unit &unit);
    quint32 addEmployee(const Employee &employee);
    quint32 addGuideShift(const GuideShift &shift);
    /// Stored as it is, in use; identifier, state and version are the store's.
    quint32 addSchedule(const orvex::SCHEDULE_DATA &schedule);

    /// The schedule that an employee works by when nothing personal is set; replaces the one before, 0 takes it away.
    void setMainSchedule(quint32 employee, quint32 schedule);
    /// Stores a blob of a unit or an employee, such as "PT_PHOTO"; replaces one of the same name.
    void setBlob(quint32 object, const QString &name, const QByteArray &data);
    /// Replaces the day of the same date.
    void setProductionDay(const ProductionDay &day);
    /// New days or new contents of stored ones, whatever their revisions; the first record of a date wins.
    void setCalendarDays(quint32 schedule, const QList<orvex::SCHEDULE_CALENDAR_DAY> &days);

    /// The first failure; success while there is none.
    [[nodiscard]] const Outcome &failure() const { return m_outcome; }
    /// Stores everything or nothing.
    [[nodiscard]] Outcome commit();

private:
    [[nodiscard]] quint32 newObject(const QString &kind);
    /// Runs a writing statement; keeps its failure.
    bool run(Query &query);

    Connection *m_connection = nullptr; ///< null without an open database
    Outcome m_outcome;
    bool m_begun = false;
};

} // namespace store
