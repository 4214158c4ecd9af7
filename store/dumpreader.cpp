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

/// An input iterator over the bytes of a device, for the parser.
class ByteIterator
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
        QByteArray block;
        int position = 0;

        explicit Source(QIODevice &from)
            : device(from)
        {
            next();
        }
        void next()
        {
            constexpr qint64 BlockSize = 1 << 16;
            if (++position < block.size())
                return;
            block = device.read(BlockSize);
            position = 0;
        }
    };

    explicit ByteIterator(Source *source = nullptr)
        : m_source(source)
    {
    }
    reference operator*() const { return *(m_source->block.constData() + m_source->position); }
    ByteIterator &operator++()
    {
        m_source->next();
        return *this;
    }
    bool operator==(const ByteIterator &other) const { return isAtEnd() == other.isAtEnd(); }
    bool operator!=(const ByteIterator &other) const { return !(*this == other); }

private:
    [[nodiscard]] bool isAtEnd() const { return !m_source || m_source->block.isEmpty(); }

    Source *m_source;
};

auto decoded(const QVariant &base64)
{
    return QByteArray::fromBase64Encoding(base64.toString().toLatin1(), QByteArray::AbortOnBase64DecodingErrors);
}

/// Loads the document while it is parsed. The first fault ends the reading.
class Reader final : public nlohmann::json_sax<Json>
{
    Q_DECLARE_TR_FUNCTIONS(store::dump)

public:
    explicit Reader(Connection &connection)
        : m_connection(connection)
    {
    }

    /// The fault of the document; empty if there is none or if the store has failed.
    [[nodiscard]] const QString &fault() const { return m_fault; }

    bool null() override { return value({}); }
    // No column holds booleans or fractions: these values are rejected by their type.
    bool boolean(bool) override { return value(QVariant(false)); }
    bool number_integer(number_integer_t number) override { return value(qint64(number)); }
    bool number_unsigned(number_unsigned_t number) override { return value(quint64(number)); }
    bool number_float(number_float_t, const string_t &) override { return value(QVariant(0.5)); }
    bool string(string_t &text) override { return value(QString::fromUtf8(text.data(), int(text.size()))); }
    bool binary(binary_t &) override { return rejectStructure(); }
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

    bool reject(const QString &fault);
    bool rejectStructure() { return reject(tr("Выгрузка устроена не так, как их пишет эта программа.")); }
    bool enter(Place place);
    bool value(const QVariant &value);
    bool readHead(const QVariant &value);
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
    QSet<QString> m_seen; ///< keys of the document and of the current table, and table names
    const Table *m_table = nullptr;
    QStringList m_columns;
    QVector<QVariant> m_row;
    int m_rowNumber = 0;
};

bool Reader::reject(const QString &fault)
{
    m_fault = fault;
    return false;
}

bool Reader::enter(Place place)
{
    m_place = place;
    return true;
}

bool Reader::parse_error(std::size_t position, const std::string &, const nlohmann::detail::exception &)
{
    return reject(tr("Выгрузка повреждена или оборвана на байте %1.").arg(position));
}

bool Reader::key(string_t &name)
{
    m_key = QString::fromUtf8(name.data(), int(name.size()));
    // A sequence has the name of its table.
    const QString seen = m_place == Place::Sequences ? QStringLiteral("sequence ") + m_key : m_key;
    if (m_seen.contains(seen))
        return reject(tr("В выгрузке дважды записано «%1».").arg(m_key));
    m_seen.insert(seen);
    return true;
}

bool Reader::start_object(std::size_t)
{
    switch (m_place) {
    case Place::Outside:
        return enter(Place::Document);
    case Place::Document:
        if (!has("format") || !has("version"))
            return reject(tr("Это не выгрузка хранилища: она начинается с ключей format и version."));
        if (m_key == QLatin1String("sequences"))
            return enter(Place::Sequences);
        return m_key == QLatin1String("tables") && has("sequences") ? enter(Place::Tables) : rejectStructure();
    case Place::Tables:
        return openTable();
    default:
        return rejectStructure();
    }
}

bool Reader::openTable()
{
    const auto table =
        std::find_if(tables().cbegin(), tables().cend(), [this](const Table &t) { return t.name == m_key; });
    if (table == tables().cend())
        return reject(tr("Таблицы «%1» в хранилище не бывает.").arg(m_key));
    m_table = &*table;
    m_seen.remove(QStringLiteral("columns"));
    m_seen.remove(QStringLiteral("rows"));
    m_rowNumber = 0;
    return enter(Place::Table);
}

bool Reader::end_object()
{
    switch (m_place) {
    case Place::Sequences:
        return enter(Place::Document);
    case Place::Table:
        return has("rows") ? enter(Place::Tables) : reject(tr("У таблицы %1 нет строк.").arg(m_table->name));
    case Place::Tables:
        for (const Table &table : tables()) {
            if (!m_seen.contains(table.name))
                return reject(tr("В выгрузке нет таблицы %1.").arg(table.name));
        }
        return enter(Place::Document);
    default:
        return has("tables") ? enter(Place::Outside) : reject(tr("В выгрузке нет ключа tables."));
    }
}

bool Reader::start_array(std::size_t)
{
    if (m_place == Place::Rows) {
        m_row.clear();
        ++m_rowNumber;
        return enter(Place::Row);
    }
    if (m_place != Place::Table)
        return rejectStructure();
    if (m_key == QLatin1String("columns")) {
        m_columns.clear();
        return enter(Place::Columns);
    }
    return m_key == QLatin1String("rows") && has("columns") ? enter(Place::Rows) : rejectStructure();
}

bool Reader::end_array()
{
    switch (m_place) {
    case Place::Columns:
        return closeColumns();
    case Place::Row:
        return insertRow() && enter(Place::Rows);
    default:
        return enter(Place::Table);
    }
}

bool Reader::closeColumns()
{
    QStringList expected;
    for (const Column &column : m_table->columns)
        expected.append(column.name);
    if (m_columns != expected) {
        return reject(
            tr("Столбцы таблицы %1 должны быть такими: %2.").arg(m_table->name, expected.join(QLatin1String(", "))));
    }
    return enter(Place::Table);
}

bool Reader::value(const QVariant &value)
{
    switch (m_place) {
    case Place::Document:
        return readHead(value);
    case Place::Sequences:
        return setSequence(value);
    case Place::Columns:
        m_columns.append(value.toString());
        return true;
    case Place::Row:
        m_row.append(value);
        return m_row.size() <= m_table->columns.size() || rejectStructure();
    default:
        return rejectStructure();
    }
}

bool Reader::readHead(const QVariant &value)
{
    if (m_key == QLatin1String("format"))
        return value == QVariant(QString(FormatName)) || reject(tr("Это не выгрузка хранилища."));
    if (m_key == QLatin1String("version")) {
        return value == QVariant(quint64(FormatVersion))
            || reject(
                   tr("Выгрузка сделана другой версией программы: эта знает выгрузки версии %1.").arg(FormatVersion));
    }
    return rejectStructure();
}

bool Reader::setSequence(const QVariant &value)
{
    const bool isNumber = value.type() == QVariant::ULongLong && value.toULongLong() <= 0x7FFFFFFF;
    if (!hasSequence(m_key) || !isNumber)
        return reject(tr("Номер «%1» в выгрузке записан неверно.").arg(m_key));
    Query update = m_connection.query("sequence_set");
    return update.bind(":name", m_key).bind(":seq", value.toLongLong()).exec();
}

bool Reader::insertRow()
{
    bool isValid = m_row.size() == m_table->columns.size();
    for (int i = 0; isValid && i < m_row.size(); ++i)
        isValid = fits(m_table->columns.at(i), m_row.at(i));
    if (!isValid)
        return reject(tr("Строка %1 таблицы %2 не подходит к её столбцам.").arg(m_rowNumber).arg(m_table->name));
    Query insert = m_connection.query("load " + QByteArray(m_table->name.data()), m_table->insertStatement());
    for (int i = 0; i < m_row.size(); ++i)
        bind(insert, m_table->columns.at(i), m_row.at(i));
    if (insert.exec())
        return true;
    if (m_connection.failure().code != ResultInvalidData)
        return false;
    return reject(tr("Строка %1 таблицы %2: %3").arg(m_rowNumber).arg(m_table->name, m_connection.failure().text));
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
        // The references between the tables are circular.
        if (!connection.query("references_defer").exec() || !connection.query("roles_clear").exec())
            return connection.failure();
        ByteIterator::Source source(device);
        if (!Json::sax_parse(ByteIterator(&source), ByteIterator(), &reader))
            return connection.failed() ? connection.failure() : invalid(reader.fault());
        return checkLoaded(connection);
    });
    // If the store has refused a row, the reader's text names the row.
    return reader.fault().isEmpty() ? outcome : invalid(reader.fault());
}

} // namespace store::dump
