#pragma once

#include <QString>
#include <QStringView>

#include <vector>

namespace scheduleview {

/// The case-folded names of a list's rows, in one block of memory that a search reads from start to end.
///
/// Each code point folds to exactly one, as in a comparison with `Qt::CaseInsensitive`.
class FoldedNames
{
public:
    [[nodiscard]] static QString folded(QStringView text);

    /// Valid until the next change.
    [[nodiscard]] QStringView at(int row) const
    {
        const Span &span = m_spans[row];
        return {m_text.data() + span.offset, int(span.length)};
    }

    /// Reserves memory for \a rows more names with \a units UTF-16 units in total.
    void reserveMore(std::size_t rows, std::size_t units);
    void insert(int row, const QString &name);
    void replace(int row, const QString &name);
    /// \a rows are ascending and distinct.
    void remove(const std::vector<int> &rows);

private:
    struct Span
    {
        quint32 offset;
        quint32 length;
    };

    [[nodiscard]] Span append(const QString &name);

    std::vector<char16_t> m_text;
    std::vector<Span> m_spans; ///< by row
    std::size_t m_unusedUnits = 0; ///< units of m_text that no span refers to
};

} // namespace scheduleview
