#pragma once

#include "calendardays.h"
#include "objects.h"
#include "schedules.h"

#include <QSet>

/// Rows of the store and the records of the client.
namespace store {

class Connection;
class Query;

/// Keeps one copy of texts that many records share, such as colours.
class TextPool
{
public:
    /// An equal text that shares its memory with earlier ones.
    [[nodiscard]] QString shared(const QString &text) { return text.isEmpty() ? QString() : *m_texts.insert(text); }

private:
    QSet<QString> m_texts;
};

namespace records {

/// A row of `schedules_all`.
[[nodiscard]] orvex::SCHEDULE_DATA schedule(const Query &row, TextPool &pool);
/// Binds all that a record says of itself, and who stores it, and when.
void bindSchedule(Query &query, const orvex::SCHEDULE_DATA &schedule, const Connection &connection);
/// A copy whose days, shifts and intervals all have an identifier, unique within the record, and whose days name the
/// identifier of their shift.
[[nodiscard]] orvex::SCHEDULE_DATA withIdentifiers(orvex::SCHEDULE_DATA schedule);

/// The `mode` column: days and shifts as JSON, empty without any.
[[nodiscard]] QString modeText(const orvex::SCHEDULE_DATA &schedule);
/// Reads it back; false, with \a schedule unchanged, when it is not what `modeText` writes.
bool readMode(const QString &text, orvex::SCHEDULE_DATA &schedule);

/// The `intervals` column of a calendar day: pairs of seconds as JSON, empty without any.
[[nodiscard]] QString intervalsText(const QList<orvex::SCHEDULE_CALENDAR_INTERVAL> &intervals);
/// Reads it back; an empty list for anything else.
[[nodiscard]] QList<orvex::SCHEDULE_CALENDAR_INTERVAL> intervals(const QString &text);
/// A row of `calendar_days`.
[[nodiscard]] orvex::SCHEDULE_CALENDAR_DAY calendarDay(const Query &row);

/// A row of `subjects_all`: an employee.
[[nodiscard]] orvex::ObjectInfo subject(const Query &row, TextPool &pool);
/// A row of `org_units_all`.
[[nodiscard]] orvex::ObjectInfo unit(const Query &row);
/// A row of `shift_intervals_all`.
[[nodiscard]] orvex::ObjectInfo interval(const Query &row);
/// A row of `schedule_shifts_all`, with the identifiers of its intervals in order.
[[nodiscard]] orvex::ObjectInfo shift(const Query &row, const QStringList &intervals);

} // namespace records

} // namespace store
