#pragma once

#include "calendardays.h"
#include "objects.h"
#include "schedules.h"

#include <QSet>

/// Conversion between rows of the store and records of the client.
namespace store {

class Connection;
class Query;

/// Shares equal texts between many records, such as colours.
class TextPool
{
public:
    /// An equal text that shares its memory with the earlier ones.
    [[nodiscard]] QString shared(const QString &text) { return text.isEmpty() ? QString() : *m_texts.insert(text); }

private:
    QSet<QString> m_texts;
};

namespace records {

/// A row of `schedules_all`.
[[nodiscard]] orvex::SCHEDULE_DATA schedule(const Query &row, TextPool &pool);
/// Binds the fields of a record, the login and the current time.
void bindSchedule(Query &query, const orvex::SCHEDULE_DATA &schedule, const Connection &connection);
/// A copy in which every day, shift and interval has an identifier that is unique within the record, and every day has
/// the identifier of its shift.
[[nodiscard]] orvex::SCHEDULE_DATA withIdentifiers(orvex::SCHEDULE_DATA schedule);

/// The `mode` column: days and shifts as JSON; empty if there are none.
[[nodiscard]] QString modeText(const orvex::SCHEDULE_DATA &schedule);
/// Reads the `mode` column. Returns false and leaves \a schedule unchanged if the text is not in this form.
[[nodiscard]] bool readMode(const QString &text, orvex::SCHEDULE_DATA &schedule);

/// The `intervals` column of a calendar day: pairs of seconds as JSON; empty if there are none.
[[nodiscard]] QString intervalsText(const QList<orvex::SCHEDULE_CALENDAR_INTERVAL> &intervals);
/// Reads the `intervals` column; an empty list for any other text.
[[nodiscard]] QList<orvex::SCHEDULE_CALENDAR_INTERVAL> intervals(const QString &text);
/// A row of `calendar_days`.
[[nodiscard]] orvex::SCHEDULE_CALENDAR_DAY calendarDay(const Query &row);

/// A row of `subjects_all`: an employee.
[[nodiscard]] orvex::ObjectInfo subject(const Query &row, TextPool &pool);
/// A row of `org_units_all`.
[[nodiscard]] orvex::ObjectInfo unit(const Query &row);
/// A row of `shift_intervals_all`.
[[nodiscard]] orvex::ObjectInfo interval(const Query &row);
/// A row of `schedule_shifts_all`; \a intervals are the identifiers of its intervals in order.
[[nodiscard]] orvex::ObjectInfo shift(const Query &row, const QStringList &intervals);

} // namespace records

} // namespace store
