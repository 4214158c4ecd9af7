#pragma once

#include "latin1.h"

#include <QLatin1String>
#include <QList>
#include <QString>

/// The contents of a dump. The change log and the store's identity are not part of it: a loaded store is another store,
/// which clients read completely.
namespace store::dump {

enum class Kind
{
    Integer,
    Text,
    Bytes, ///< base64 in the document
};

struct Column
{
    QLatin1String name;
    Kind kind = Kind::Integer;
    bool nullable = false;
};

struct Table
{
    QLatin1String name;
    QLatin1String key; ///< columns that order the rows
    QList<Column> columns;

    /// All rows, ordered by the key.
    [[nodiscard]] QString selectStatement() const;
    /// One row; values are bound by the names of the columns.
    [[nodiscard]] QString insertStatement() const;
};

constexpr QLatin1String FormatName = orvex::latin1("orvex-store-dump");
constexpr int FormatVersion = 1;

/// Every table of a dump, in the order in which they are written.
[[nodiscard]] const QList<Table> &tables();
/// Whether the table never assigns an identifier twice: the last assigned one is part of the dump.
[[nodiscard]] bool hasSequence(const QString &table);

} // namespace store::dump
