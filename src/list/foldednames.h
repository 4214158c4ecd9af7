#pragma once

#include <QString>
#include <QStringView>

#include <vector>

namespace scheduleview {

/// The case-folded names of a list's rows, all in one block: a pass over them touches no other memory.
///
/// Folds one code point to one, as comparing with `Qt::CaseInsensitive` does.
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

    /// Makes room for \a rows names of \a units UTF-16 units in all, besides those already there.
    void reserveMore(std::size_t rows, std::size_t units);
    void insert(int row, const QString &name);
    void replace(int row, const QString &name);
    /// \a rows ascending and distinct.
    void remove(const std::vector<int> &rows);

private:
    struct Span
    {
        quint32 offset;
        quint32 length;
    };

    [[nodiscard]] Span append(const QString &name);
    void drop(const Span &span);

    std::vector<char16_t> m_text;
    std::vector<Span> m_spans; ///< by row
    std::size_t m_dropped = 0; ///< units of m_text that no span refers to
};

} // namespace scheduleview
