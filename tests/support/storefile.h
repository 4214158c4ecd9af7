#pragma once

#include "calendardays.h"
#include "database.h"

#include <QByteArray>
#include <QStringList>

namespace support {

/// Executes a statement on the file of a store through a connection of its own. Returns the error, empty on success.
[[nodiscard]] QString tryStatement(const QString &file, const QString &statement);
/// The same; ends the program when it fails.
void executeStatement(const QString &file, const QString &statement);

/// Empty when the file cannot be read.
[[nodiscard]] QByteArray contents(const QString &file);

/// Ends the program if \a outcome is a failure.
void require(const store::Outcome &outcome);
/// What clients read from a store; ends the program when it cannot be read.
[[nodiscard]] orvex::StorageChange snapshotOf(const QString &file);
/// The faults that a check finds in a store, or why it cannot be checked. Each fault must have a remedy.
[[nodiscard]] QStringList faultsOf(const QString &file);
[[nodiscard]] QByteArray dumpOf(const QString &file);
/// The days of a schedule as a client reads them; ends the program when they cannot be read.
[[nodiscard]] QList<orvex::SCHEDULE_CALENDAR_DAY> storedDays(store::Database &database, qint32 schedule,
                                                             const QDate &first, const QDate &last);

} // namespace support
