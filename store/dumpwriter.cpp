#include "dump.h"

#include "connection.h"
#include "dumptables.h"

#include <QCoreApplication>
#include <QIODevice>

namespace store::dump {

namespace {

/// Writes the text of the document in blocks.
class Output
{
public:
    explicit Output(QIODevice &device)
        : m_device(device)
    {
    }

    Output &operator<<(const QByteArray &text)
    {
        constexpr int BlockSize = 1 << 16;
        m_block += text;
        if (m_block.size() >= BlockSize)
            flush();
        return *this;
    }
    /// A JSON string.
    Output &quote(const QString &text)
    {
        QByteArray quoted("\"");
        for (const char c : text.toUtf8()) {
            if (c == '"' || c == '\\')
                quoted.append('\\').append(c);
            else if (uchar(c) < 0x20)
                quoted += "\\u00" + QByteArray(1, c).toHex();
            else
                quoted.append(c);
        }
        return *this << quoted.append('"');
    }
    void flush()
    {
        m_ok = m_ok && m_device.write(m_block) == m_block.size();
        m_block.clear();
    }
    [[nodiscard]] bool ok() const { return m_ok; }

private:
    QIODevice &m_device;
    QByteArray m_block;
    bool m_ok = true;
};

void writeValue(Output &out, const Query &row, int index, const Column &column)
{
    // An empty byte array is read as NULL, too.
    if (column.nullable && row.isNull(index))
        out << "null";
    else if (column.kind == Kind::Integer)
        out << QByteArray::number(row.bigNumber(index));
    else if (column.kind == Kind::Bytes)
        out << "\"" + row.bytes(index).toBase64() + "\"";
    else
        out.quote(row.text(index));
}

void writeTable(Connection &connection, Output &out, const Table &table)
{
    out.quote(table.name) << ": {\n  \"columns\": [";
    for (int i = 0; i < table.columns.size(); ++i) {
        out << (i > 0 ? ", " : "");
        out.quote(table.columns.at(i).name);
    }
    out << "],\n  \"rows\": [";
    Query select = connection.query("dump " + QByteArray(table.name.data()), table.selectStatement());
    if (!select.exec())
        return;
    for (bool first = true; out.ok() && select.next(); first = false) {
        out << (first ? "\n    [" : ",\n    [");
        for (int i = 0; i < table.columns.size(); ++i) {
            out << (i > 0 ? ", " : "");
            writeValue(out, select, i, table.columns.at(i));
        }
        out << "]";
    }
    out << "\n  ]\n}";
}

void writeSequences(Connection &connection, Output &out)
{
    out << "\"sequences\": {";
    Query select = connection.query("sequences");
    if (!select.exec())
        return;
    for (bool first = true; select.next();) {
        if (!hasSequence(select.text(0)))
            continue;
        out << (first ? "" : ", ");
        out.quote(select.text(0)) << ": " << QByteArray::number(select.bigNumber(1));
        first = false;
    }
    out << "},\n";
}

} // namespace

Outcome write(Connection &connection, QIODevice &device)
{
    Output out(device);
    return connection.transact(Transaction::Read, [&]() -> Outcome {
        out << "{\n\"format\": \"" + QByteArray(FormatName.data())
                + "\",\n\"version\": " + QByteArray::number(FormatVersion) + ",\n";
        writeSequences(connection, out);
        out << "\"tables\": {\n";
        for (int i = 0; i < tables().size(); ++i) {
            out << (i > 0 ? ",\n" : "");
            writeTable(connection, out, tables().at(i));
        }
        out << "\n}\n}\n";
        out.flush();
        if (connection.failed())
            return connection.failure();
        if (out.ok())
            return {};
        return {
            ResultStorageError,
            QCoreApplication::translate("store::dump", "Выгрузку не удалось записать: %1.").arg(device.errorString()),
            QCoreApplication::translate("store::dump", "Проверьте место на диске и права на папку.")};
    });
}

} // namespace store::dump
