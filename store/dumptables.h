#pragma once

#include "latin1.h"

#include <QLatin1String>
#include <QList>
#include <QString>

/// What of a store goes into a dump. The log of changes and the store's identity do not: a store that was loaded is
/// another one, whose clients read the whole.
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
    /// One row; each column's value is bound by its name.
    [[nodiscard]] QString insertStatement() const;
};

constexpr QLatin1String FormatName = orvex::latin1("orvex-store-dump");
constexpr int FormatVersion = 1;

/// Every table of a dump, in the order in which they are written.
[[nodiscard]] const QList<Table> &tables();
/// The tables whose identifiers are never given twice: their last ones go into the dump.
[[nodiscard]] bool hasSequence(const QString &table);

} // namespace store::dump
