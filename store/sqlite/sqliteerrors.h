#pragma once

#include "outcome.h"

#include <QCoreApplication>

class QSqlError;

namespace store {

// Primary result codes of the engine (https://www.sqlite.org/rescode.html).
enum SqliteCode
{
    SqliteBusy = 5,
    SqliteLocked = 6,
    SqliteReadOnly = 8,
    SqliteIoError = 10,
    SqliteCorrupt = 11,
    SqliteFull = 13,
    SqliteCantOpen = 14,
    SqliteConstraint = 19,
    SqliteNotADatabase = 26,
};

/// Errors of the embedded engine as outcomes for the operator. Every \a path is that of the store's file.
class SqliteErrors
{
    Q_DECLARE_TR_FUNCTIONS(store::SqliteErrors)

public:
    /// The primary result code; 0 without an error.
    [[nodiscard]] static int code(const QSqlError &error);

    /// An error of an open store.
    [[nodiscard]] static Outcome classify(const QSqlError &error);
    /// An error while opening.
    [[nodiscard]] static Outcome cannotOpen(const QString &path, const QSqlError &error);
    /// The file belongs to another program or is not a database.
    [[nodiscard]] static Outcome notAStore(const QString &path);
    /// The log needs memory shared between programs, which most network folders do not support.
    [[nodiscard]] static Outcome unsuitableDisk(const QString &path);
    /// The log beside the file belongs to another file.
    [[nodiscard]] static Outcome foreignLog(const QString &path);
};

} // namespace store
