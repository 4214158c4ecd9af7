#include "dump.h"

#include "connection.h"
#include "dumptables.h"
#include "storecheck.h"

#include <QCoreApplication>
#include <QIODevice>
#include <QSet>
#include <QVariant>

#include <nlohmann/json.hpp>

#include <algorithm>
#include <iterator>
#include <string>

namespace store::dump {

namespace {

using Json = nlohmann::json;

/// The bytes of a device one after another, as the parser wants them.
class Bytes
{
public:
    using iterator_category = std::input_iterator_tag;
    using value_type = char;
    using difference_type = std::ptrdiff_t;
    using pointer = const char *;
    using reference = const char &;

    struct Source
    {
        QIODevice &device;
        QByteArray piece;
        int position = 0;

        explicit Source(QIODevice &from)
            : device(from)
        {
            next();
        }
        void next()
        {
            constexpr qint64 Piece = 1 << 16;
            if (++position < piece.size())
                return;
            piece = device.read(Piece);
            position = 0;
        }
    };

    explicit Bytes(Source *source = nullptr)
        : m_source(source)
    {
    }
    reference operator*() const { return *(m_source->piece.constData() + m_source->position); }
    Bytes &operator++()
    {
        m_source->next();
        return *this;
    }
    bool operator==(const Bytes &other) const { return isAtEnd() == other.isAtEnd(); }
    bool operator!=(const Bytes &other) const { return !(*this == other); }

private:
    [[nodiscard]] bool isAtEnd() const { return !m_source || m_source->piece.isEmpty(); }

    Source *m_source;
};

auto decoded(const QVariant &base64)
{
    return QByteArray::fromBase64Encoding(base64.toString().toLatin1(), QByteArray::AbortOnBase64DecodingErrors);
}

/// Takes the document in as the parser meets its parts. The first thing that does not fit ends the reading.
class Reader final : public nlohmann::json_sax<Json>
{
    Q_DECLARE_TR_FUNCTIONS(store::dump)

public:
    explicit Reader(Connection &connection)
        : m_connection(connection)
    {
    }

    /// What is wrong with the document; empty after a failure of the store.
    [[nodiscard]] const QString &fault() const { return m_fault; }

    bool null() override { return value({}); }
    bool boolean(bool) override { return value(QVariant(false)); }
    bool number_integer(number_integer_t number) override { return value(qint64(number)); }
    bool number_unsigned(number_unsigned_t number) override { return value(quint64(number)); }
    bool number_float(number_float_t, const string_t &) override { return value(QVariant(0.5)); }
    bool string(string_t &text) override { return value(QString::fromUtf8(text.data(), int(text.size()))); }
    bool binary(binary_t &) override { return misplaced(); }
    bool key(string_t &name) override;
    bool start_object(std::size_t) override;
    bool end_object() override;
    bool start_array(std::size_t) override;
    bool end_array() override;
    bool parse_error(std::size_t position, const std::string &, const nlohmann::detail::exception &) override;

private:
    enum class Place
    {
        Outside,
        Document,
        Sequences,
        Tables,
        Table,
        Columns,
        Rows,
        Row,
    };

    bool refuse(const QString &fault);
    bool misplaced() { return refuse(tr("Выгрузка устроена не так, как их пишет эта программа.")); }
    bool goTo(Place place);
    bool value(const QVariant &value);
    bool head(const QVariant &value);
    bool setSequence(const QVariant &value);
    bool openTable();
    bool closeColumns();
    bool insertRow();
    bool fits(const Column &column, const QVariant &value) const;
    void bind(Query &query, const Column &column, const QVariant &value) const;
    [[nodiscard]] bool has(const char *what) const { return m_seen.contains(QLatin1String(what)); }

    Connection &m_connection;
    QString m_fault;
    Place m_place = Place::Outside;
    QString m_key;
    QSet<QString> m_seen; ///< keys of the document and of the present table, names of tables
    const Table *m_table = nullptr;
    QStringList m_columns;
    QVector<QVariant> m_row;
    int m_rowNumber = 0;
};

bool Reader::refuse(const QString &fault)
{
    m_fault = fault;
    return false;
}

bool Reader::goTo(Place place)
{
    m_place = place;
    return true;
}

bool Reader::parse_error(std::size_t position, const std::string &, const nlohmann::detail::exception &)
{
    return refuse(tr("Выгрузка повреждена или оборвана на байте %1.").arg(position));
}

bool Reader::key(string_t &name)
{
    m_key = QString::fromUtf8(name.data(), int(name.size()));
    // A sequence is named after a table.
    const QString seen = m_place == Place::Sequences ? QStringLiteral("sequence ") + m_key : m_key;
    if (m_seen.contains(seen))
        return refuse(tr("В выгрузке дважды записано «%1».").arg(m_key));
    m_seen.insert(seen);
    return true;
}

bool Reader::start_object(std::size_t)
{
    switch (m_place) {
    case Place::Outside:
        return goTo(Place::Document);
    case Place::Document:
        if (!has("format") || !has("version"))
            return refuse(tr("Это не выгрузка хранилища: она начинается с ключей format и version."));
        if (m_key == QLatin1String("sequences"))
            return goTo(Place::Sequences);
        return m_key == QLatin1String("tables") && has("sequences") ? goTo(Place::Tables) : misplaced();
    case Place::Tables:
        return openTable();
    default:
        return misplaced();
    }
}

bool Reader::openTable()
{
    const auto table =
        std::find_if(tables().cbegin(), tables().cend(), [this](const Table &t) { return t.name == m_key; });
    if (table == tables().cend())
        return refuse(tr("Таблицы «%1» в хранилище не бывает.").arg(m_key));
    m_table = &*table;
    m_seen.remove(QStringLiteral("columns"));
    m_seen.remove(QStringLiteral("rows"));
    m_rowNumber = 0;
    return goTo(Place::Table);
}

bool Reader::end_object()
{
    switch (m_place) {
    case Place::Sequences:
        return goTo(Place::Document);
    case Place::Table:
        return has("rows") ? goTo(Place::Tables) : refuse(tr("У таблицы %1 нет строк.").arg(m_table->name));
    case Place::Tables:
        for (const Table &table : tables()) {
            if (!m_seen.contains(table.name))
                return refuse(tr("В выгрузке нет таблицы %1.").arg(table.name));
        }
        return goTo(Place::Document);
    default:
        return has("tables") ? goTo(Place::Outside) : refuse(tr("В выгрузке нет ключа tables."));
    }
}

bool Reader::start_array(std::size_t)
{
    if (m_place == Place::Rows) {
        m_row.clear();
        ++m_rowNumber;
        return goTo(Place::Row);
    }
    if (m_place != Place::Table)
        return misplaced();
    if (m_key == QLatin1String("columns")) {
        m_columns.clear();
        return goTo(Place::Columns);
    }
    return m_key == QLatin1String("rows") && has("columns") ? goTo(Place::Rows) : misplaced();
}

bool Reader::end_array()
{
    switch (m_place) {
    case Place::Columns:
        return closeColumns();
    case Place::Row:
        return insertRow() && goTo(Place::Rows);
    default:
        return goTo(Place::Table);
    }
}

bool Reader::closeColumns()
{
    QStringList expected;
    for (const Column &column : m_table->columns)
        expected.append(column.name);
    if (m_columns != expected) {
        return refuse(
            tr("Столбцы таблицы %1 должны быть такими: %2.").arg(m_table->name, expected.join(QLatin1String(", "))));
    }
    return goTo(Place::Table);
}

bool Reader::value(const QVariant &value)
{
    switch (m_place) {
    case Place::Document:
        return head(value);
    case Place::Sequences:
        return setSequence(value);
    case Place::Columns:
        m_columns.append(value.toString());
        return true;
    case Place::Row:
        m_row.append(value);
        return m_row.size() <= m_table->columns.size() || misplaced();
    default:
        return misplaced();
    }
}

bool Reader::head(const QVariant &value)
{
    if (m_key == QLatin1String("format"))
        return value == QVariant(QString(FormatName)) || refuse(tr("Это не выгрузка хранилища."));
    if (m_key == QLatin1String("version")) {
        return value == QVariant(quint64(FormatVersion))
            || refuse(
                   tr("Выгрузка сделана другой версией программы: эта знает выгрузки версии %1.").arg(FormatVersion));
    }
    return misplaced();
}

bool Reader::setSequence(const QVariant &value)
{
    const bool isNumber = value.type() == QVariant::ULongLong && value.toULongLong() <= 0x7FFFFFFF;
    if (!hasSequence(m_key) || !isNumber)
        return refuse(tr("Номер «%1» в выгрузке записан неверно.").arg(m_key));
    Query update = m_connection.query("sequence_set");
    return update.bind(":name", m_key).bind(":seq", value.toLongLong()).exec();
}

bool Reader::insertRow()
{
    bool good = m_row.size() == m_table->columns.size();
    for (int i = 0; good && i < m_row.size(); ++i)
        good = fits(m_table->columns.at(i), m_row.at(i));
    if (!good)
        return refuse(tr("Строка %1 таблицы %2 не подходит к её столбцам.").arg(m_rowNumber).arg(m_table->name));
    Query insert = m_connection.query("load " + QByteArray(m_table->name.data()), m_table->insertStatement());
    for (int i = 0; i < m_row.size(); ++i)
        bind(insert, m_table->columns.at(i), m_row.at(i));
    if (insert.exec())
        return true;
    if (m_connection.failure().code != ResultInvalidData)
        return false;
    return refuse(tr("Строка %1 таблицы %2: %3").arg(m_rowNumber).arg(m_table->name, m_connection.failure().text));
}

bool Reader::fits(const Column &column, const QVariant &value) const
{
    if (!value.isValid())
        return column.nullable;
    if (column.kind == Kind::Text)
        return value.type() == QVariant::String;
    if (column.kind == Kind::Bytes)
        return value.type() == QVariant::String && decoded(value);
    return value.type() == QVariant::LongLong
        || (value.type() == QVariant::ULongLong && value.toULongLong() <= quint64(INT64_MAX));
}

void Reader::bind(Query &query, const Column &column, const QVariant &value) const
{
    const QByteArray parameter = ':' + QByteArray(column.name.data());
    const char *name = parameter.constData();
    if (!value.isValid())
        query.bindReference(name, 0);
    else if (column.kind == Kind::Integer)
        query.bind(name, value.toLongLong());
    else if (column.kind == Kind::Text)
        query.bind(name, value.toString());
    else
        query.bind(name, decoded(value).decoded);
}

Outcome invalid(const QString &fault)
{
    return {ResultInvalidData, fault,
            QCoreApplication::translate("store::dump", "Ничего не загружено. Исправьте выгрузку или возьмите другую.")};
}

Outcome checkLoaded(Connection &connection)
{
    QList<Fault> faults;
    if (Outcome checked = StoreCheck(connection).checkRecords(faults); !checked.ok())
        return checked;
    return faults.isEmpty() ? Outcome() : invalid(faults.first().text);
}

} // namespace

Outcome read(Connection &connection, QIODevice &device)
{
    Reader reader(connection);
    Outcome outcome = connection.transact(Transaction::Write, [&]() -> Outcome {
        if (connection.query("records_any").execFirst())
            return invalid(QCoreApplication::translate("store::dump", "В хранилище уже есть данные."));
        // Tables refer to each other in a circle.
        if (!connection.query("references_defer").exec() || !connection.query("roles_clear").exec())
            return connection.failure();
        Bytes::Source source(device);
        if (!Json::sax_parse(Bytes(&source), Bytes(), &reader))
            return connection.failed() ? connection.failure() : invalid(reader.fault());
        return checkLoaded(connection);
    });
    // Where the store has refused a row, the reader knows which.
    return reader.fault().isEmpty() ? outcome : invalid(reader.fault());
}

} // namespace store::dump
