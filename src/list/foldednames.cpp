#include "foldednames.h"

#include "rowruns.h"

#include <array>

namespace scheduleview {

namespace {

/// Latin, Greek and Cyrillic are below this code point, so that nearly every name needs only the table.
constexpr char16_t TableEnd = 0x530;

const std::array<char16_t, TableEnd> &foldTable()
{
    static const auto table = [] {
        std::array<char16_t, TableEnd> folds{};
        for (char16_t c = 0; c < TableEnd; ++c)
            folds[c] = char16_t(QChar::toCaseFolded(uint(c)));
        return folds;
    }();
    return table;
}

void fold(QStringView text, char16_t *to)
{
    const auto &table = foldTable();
    const char16_t *from = text.utf16();
    const char16_t *const end = from + text.size();
    while (from != end) {
        const char16_t unit = *from++;
        if (unit < TableEnd) {
            *to++ = table[unit];
            continue;
        }
        if (!QChar::isHighSurrogate(unit) || from == end || !QChar::isLowSurrogate(*from)) {
            *to++ = char16_t(QChar::toCaseFolded(uint(unit)));
            continue;
        }
        const uint point = QChar::toCaseFolded(QChar::surrogateToUcs4(unit, *from++));
        *to++ = QChar::highSurrogate(point);
        *to++ = QChar::lowSurrogate(point);
    }
}

} // namespace

QString FoldedNames::folded(QStringView text)
{
    QString result(int(text.size()), Qt::Uninitialized);
    fold(text, reinterpret_cast<char16_t *>(result.data()));
    return result;
}

void FoldedNames::reserveMore(std::size_t rows, std::size_t units)
{
    m_spans.reserve(m_spans.size() + rows);
    m_text.reserve(m_text.size() + units);
}

void FoldedNames::insert(int row, const QString &name)
{
    m_spans.insert(m_spans.begin() + row, append(name));
}

void FoldedNames::replace(int row, const QString &name)
{
    m_unusedUnits += m_spans[row].length;
    m_spans[row].length = 0;
    m_spans[row] = append(name);
}

void FoldedNames::remove(const std::vector<int> &rows)
{
    for (const int row : rows)
        m_unusedUnits += m_spans[row].length;
    eraseRows(m_spans, rows);
}

FoldedNames::Span FoldedNames::append(const QString &name)
{
    if (m_unusedUnits > m_text.size() / 2) {
        std::vector<char16_t> live;
        live.reserve(m_text.size() - m_unusedUnits);
        for (Span &span : m_spans) {
            const auto start = m_text.cbegin() + span.offset;
            span.offset = quint32(live.size());
            live.insert(live.end(), start, start + span.length);
        }
        m_text.swap(live);
        m_unusedUnits = 0;
    }
    const Span span{quint32(m_text.size()), quint32(name.size())};
    m_text.resize(m_text.size() + span.length);
    fold(name, m_text.data() + span.offset);
    return span;
}

} // namespace scheduleview
