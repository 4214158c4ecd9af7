#include "scheduleorder.h"

#include "foldednames.h"
#include "schedulemodel.h"

#include <QHash>

#include <algorithm>
#include <numeric>

namespace {

struct Entry
{
    qint64 major;
    quint64 prefix;
    int row;
};

int compareDays(const QDate &a, const QDate &b)
{
    return a == b ? 0 : (a < b ? -1 : 1);
}

/// The first eight characters of a name as a number. A smaller number means a smaller name; equal numbers require a
/// comparison of the names. A character that is neither Latin nor Cyrillic ends the prefix.
quint64 prefixOf(QStringView name)
{
    quint64 prefix = 0;
    int shift = 56;
    for (const QChar letter : name.left(qMin(name.size(), qsizetype(8)))) {
        const ushort unit = letter.unicode();
        const bool latin = unit < 0x80;
        const bool cyrillic = unit >= 0x400 && unit < 0x47E;
        prefix |= quint64(latin ? unit : cyrillic ? unit - 0x400 + 0x81 : unit < 0x400 ? 0x80 : 0xFF) << shift;
        if (!latin && !cyrillic)
            break;
        shift -= 8;
    }
    return prefix;
}

/// Returns for each of \a keys the rank of its text: equal texts have equal ranks. \a textOf is called once per
/// distinct key.
template <class Key, class TextOf> std::vector<qint64> ranks(const std::vector<Key> &keys, TextOf textOf)
{
    QHash<Key, int> known;
    std::vector<QString> texts;
    std::vector<int> textAt;
    textAt.reserve(keys.size());
    for (const Key &key : keys) {
        const auto it = known.constFind(key);
        if (it != known.constEnd()) {
            textAt.push_back(*it);
            continue;
        }
        known.insert(key, int(texts.size()));
        textAt.push_back(int(texts.size()));
        texts.push_back(textOf(key));
    }
    std::vector<int> order(texts.size());
    std::iota(order.begin(), order.end(), 0);
    std::sort(order.begin(), order.end(), [&texts](int a, int b) { return texts[a] < texts[b]; });
    std::vector<qint64> rank(texts.size());
    for (std::size_t i = 1; i < order.size(); ++i)
        rank[order[i]] = rank[order[i - 1]] + (texts[order[i]] == texts[order[i - 1]] ? 0 : 1);
    std::vector<qint64> result;
    result.reserve(keys.size());
    for (const int at : textAt)
        result.push_back(rank[at]);
    return result;
}

template <class ValueOf> auto valuesOf(const ScheduleModel &model, const std::vector<int> &rows, ValueOf valueOf)
{
    std::vector<decltype(valueOf(model.recordAt(0)))> values;
    values.reserve(rows.size());
    for (const int row : rows)
        values.push_back(valueOf(model.recordAt(row)));
    return values;
}

} // namespace

namespace scheduleview {

ScheduleOrder::ScheduleOrder(const ScheduleModel &model, int column, Qt::SortOrder order)
    : m_model(model)
    , m_column(column)
    , m_descending(order == Qt::DescendingOrder)
{
}

bool ScheduleOrder::operator()(int a, int b) const
{
    const int byColumn = compareColumn(a, b);
    if (byColumn != 0)
        return (byColumn < 0) != m_descending;
    const int byName = m_column < 0 ? 0 : m_model.foldedName(a).compare(m_model.foldedName(b));
    return byName != 0 ? byName < 0 : a < b;
}

int ScheduleOrder::compareColumn(int a, int b) const
{
    const auto &left = m_model.recordAt(a);
    const auto &right = m_model.recordAt(b);
    switch (m_column) {
    case ScheduleModel::NameColumn:
        return m_model.foldedName(a).compare(m_model.foldedName(b));
    case ScheduleModel::TypeColumn:
        return int(left.type) - int(right.type);
    case ScheduleModel::PeriodColumn:
        return compareDays(left.startDate, right.startDate);
    case ScheduleModel::ColorColumn:
    case ScheduleModel::EmployeeColumn:
    case ScheduleModel::NumberColumn:
        return foldedText(left).compare(foldedText(right));
    default:
        return 0;
    }
}

QString ScheduleOrder::foldedText(const orvex::SCHEDULE_DATA &record) const
{
    if (m_column == ScheduleModel::EmployeeColumn)
        return m_model.foldedEmployeeName(record.workerId);
    if (m_column == ScheduleModel::NumberColumn)
        return m_model.foldedEmployeeNumber(record.workerId);
    return FoldedNames::folded(record.color);
}

std::vector<qint64> ScheduleOrder::majorKeys(const std::vector<int> &rows) const
{
    const auto foldColor = [](const QString &color) { return FoldedNames::folded(color); };
    const auto employeeOf = [](const auto &record) { return record.workerId; };
    switch (m_column) {
    case ScheduleModel::ColorColumn:
        return ranks(valuesOf(m_model, rows, [](const auto &record) { return record.color; }), foldColor);
    case ScheduleModel::TypeColumn:
        return valuesOf(m_model, rows, [](const auto &record) { return qint64(record.type); });
    case ScheduleModel::EmployeeColumn:
        return ranks(valuesOf(m_model, rows, employeeOf),
                     [this](quint32 id) { return m_model.foldedEmployeeName(id); });
    case ScheduleModel::NumberColumn:
        return ranks(valuesOf(m_model, rows, employeeOf),
                     [this](quint32 id) { return m_model.foldedEmployeeNumber(id); });
    case ScheduleModel::PeriodColumn:
        return valuesOf(m_model, rows, [](const auto &record) { return record.startDate.toJulianDay(); });
    default:
        return std::vector<qint64>(rows.size(), 0);
    }
}

std::vector<int> ScheduleOrder::sorted(std::vector<int> rows) const
{
    if (m_column < 0) {
        std::sort(rows.begin(), rows.end());
        return rows;
    }
    const bool namesDescend = m_descending && m_column == ScheduleModel::NameColumn;
    const auto majors = majorKeys(rows);
    std::vector<Entry> entries;
    entries.reserve(rows.size());
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const quint64 prefix = prefixOf(m_model.foldedName(rows[i]));
        entries.push_back({m_descending ? ~majors[i] : majors[i], namesDescend ? ~prefix : prefix, rows[i]});
    }
    std::sort(entries.begin(), entries.end(), [this, namesDescend](const Entry &a, const Entry &b) {
        if (a.major != b.major)
            return a.major < b.major;
        if (a.prefix != b.prefix)
            return a.prefix < b.prefix;
        const int byName = m_model.foldedName(a.row).compare(m_model.foldedName(b.row));
        return byName != 0 ? (byName < 0) != namesDescend : a.row < b.row;
    });
    std::transform(entries.cbegin(), entries.cend(), rows.begin(), [](const Entry &entry) { return entry.row; });
    return rows;
}

} // namespace scheduleview
