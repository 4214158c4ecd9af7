#pragma once

#include <algorithm>
#include <cstddef>
#include <utility>
#include <vector>

/// Operations on lists of row numbers.
namespace scheduleview {

/// Makes \a rows ascending and distinct.
template <class Rows> void sortUnique(Rows &rows)
{
    std::sort(rows.begin(), rows.end());
    rows.erase(std::unique(rows.begin(), rows.end()), rows.end());
}

/// Removes the elements at \a rows, ascending and distinct, from \a list in one pass.
template <class T> void eraseRows(std::vector<T> &list, const std::vector<int> &rows)
{
    if (rows.empty())
        return;
    auto next = rows.cbegin();
    auto to = list.begin() + *next;
    for (auto from = to; from != list.end(); ++from) {
        if (next != rows.cend() && from - list.begin() == *next)
            ++next;
        else
            *to++ = std::move(*from);
    }
    list.erase(to, list.end());
}

/// Calls \a use with the first and the last number of each run of consecutive \a numbers, which are ascending.
template <class Use> void forEachRun(const std::vector<int> &numbers, Use use)
{
    for (std::size_t i = 0; i < numbers.size();) {
        const int first = numbers[i];
        int last = first;
        while (++i < numbers.size() && numbers[i] == last + 1)
            ++last;
        use(first, last);
    }
}

} // namespace scheduleview
