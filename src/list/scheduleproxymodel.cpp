#include "scheduleproxymodel.h"

#include "foldednames.h"
#include "rowruns.h"
#include "scheduleorder.h"
#include "schedulemodel.h"

#include <QStringMatcher>

#include <algorithm>
#include <numeric>

using scheduleview::eraseRows;
using scheduleview::forEachRun;
using scheduleview::ScheduleOrder;

namespace {

/// More runs of rows than this are signalled as one layout change.
constexpr int MaxRuns = 16;

/// Returns \a list without the positions \a removed and with \a sorted merged in, at the cost of a few comparisons for
/// each of them and one copy of the rest. Appends their positions in the result to \a inserted.
std::vector<int> merged(const std::vector<int> &list, const std::vector<int> &removed, const std::vector<int> &sorted,
                        const ScheduleOrder &order, std::vector<int> &inserted)
{
    std::vector<int> rest = list;
    eraseRows(rest, removed);
    std::vector<int> result;
    result.reserve(rest.size() + sorted.size());
    auto from = rest.cbegin();
    for (const int row : sorted) {
        const auto to = std::lower_bound(from, rest.cend(), row, order);
        result.insert(result.end(), from, to);
        inserted.push_back(int(result.size()));
        result.push_back(row);
        from = to;
    }
    result.insert(result.end(), from, rest.cend());
    return result;
}

bool areFewRuns(const std::vector<int> &numbers)
{
    int runs = 0;
    forEachRun(numbers, [&runs](int, int) { ++runs; });
    return runs <= MaxRuns;
}

/// Returns the positions of the \a marked rows in \a list, ascending.
std::vector<int> positionsOf(const std::vector<int> &list, const std::vector<bool> &marked)
{
    std::vector<int> positions;
    for (std::size_t i = 0; i < list.size(); ++i) {
        if (marked[list[i]])
            positions.push_back(int(i));
    }
    return positions;
}

} // namespace

ScheduleProxyModel::ScheduleProxyModel(QObject *parent)
    : QSortFilterProxyModel(parent)
{
    setSortRole(ScheduleModel::SortRole);
    setSortCaseSensitivity(Qt::CaseInsensitive);
    setFilterKeyColumn(ScheduleModel::NameColumn);
    setFilterCaseSensitivity(Qt::CaseInsensitive);
}

ScheduleProxyModel::Modes ScheduleProxyModel::mode() const
{
    return m_modes;
}

void ScheduleProxyModel::setMode(const Modes &modes)
{
    if (m_modes.isSharedWith(modes))
        return;
    m_modes = modes;
    if (m_source)
        rebuild();
    else
        invalidateFilter();
}

void ScheduleProxyModel::setModeAndOrder(const Modes &modes, int column, Qt::SortOrder order)
{
    if (m_source && !m_modes.isSharedWith(modes)) {
        m_sortColumn = column;
        m_sortOrder = order;
    }
    setMode(modes);
    sort(column, order);
}

void ScheduleProxyModel::setFilterFixedString(const QString &pattern)
{
    m_pattern = pattern;
    // With a text the base class would build and signal its own mapping, too.
    if (!m_source)
        QSortFilterProxyModel::setFilterFixedString(pattern);
    const QString folded = scheduleview::FoldedNames::folded(pattern);
    if (folded == m_foldedPattern)
        return;
    const bool isNarrower = folded.contains(m_foldedPattern);
    m_foldedPattern = folded;
    if (!m_source)
        return;
    Rows next = matchingAmong(isNarrower ? m_rows : m_ordered);
    Marks changed(m_source->rowCount());
    for (const int row : m_rows)
        changed[row] = true;
    for (const int row : next)
        changed[row] = !changed[row];
    const Rows removed = positionsOf(m_rows, changed);
    const Rows inserted = positionsOf(next, changed);
    setRows(std::move(next), removed, inserted);
}

int ScheduleProxyModel::sortColumn() const
{
    return m_source ? m_sortColumn : QSortFilterProxyModel::sortColumn();
}

Qt::SortOrder ScheduleProxyModel::sortOrder() const
{
    return m_source ? m_sortOrder : QSortFilterProxyModel::sortOrder();
}

void ScheduleProxyModel::setSourceModel(QAbstractItemModel *sourceModel)
{
    const auto schedules = qobject_cast<ScheduleModel *>(sourceModel);
    for (const auto &connection : m_connections)
        disconnect(connection);
    m_connections.clear();
    m_source = nullptr;
    clearRows();
    // The base class would listen to a schedule model and map it, so it gets neither the model nor the text.
    QSortFilterProxyModel::setSourceModel(schedules ? nullptr : sourceModel);
    QSortFilterProxyModel::setFilterFixedString(schedules ? QString() : m_pattern);
    if (!schedules)
        return;
    beginResetModel();
    // Skips the base class, which would map it. NOLINTNEXTLINE(bugprone-parent-virtual-call)
    QAbstractProxyModel::setSourceModel(schedules); // clazy:exclude=skipped-base-method
    m_source = schedules;
    connectSource();
    m_ordered = acceptedAmong(allRows());
    m_rows = matchingAmong(m_ordered);
    endResetModel();
}

void ScheduleProxyModel::connectSource()
{
    ScheduleModel *const source = m_source;
    const auto inserted = [this](const QModelIndex &, int first, int last) { recordsInserted(first, last); };
    const auto changed = [this](const Rows &rows) { reinsert(rows, acceptedAmong(rows)); };
    const auto destroyed = [this] {
        beginResetModel();
        clearRows();
        endResetModel();
    };
    m_connections = {
        connect(source, &ScheduleModel::rowsInserted, this, inserted),
        connect(source, &ScheduleModel::recordsChanged, this, changed),
        // Removes the rows while the records still exist: receivers of rowsAboutToBeRemoved may read them.
        connect(source, &ScheduleModel::recordsAboutToBeRemoved, this,
                [this](const Rows &rows) { reinsert(rows, {}); }),
        connect(source, &ScheduleModel::recordsRemoved, this, &ScheduleProxyModel::recordsRemoved),
        connect(source, &ScheduleModel::destroyed, this, destroyed),
    };
}

void ScheduleProxyModel::clearRows()
{
    m_ordered.clear();
    m_rows.clear();
    m_positions.clear();
}

QModelIndex ScheduleProxyModel::mapToSource(const QModelIndex &proxyIndex) const
{
    if (!m_source)
        return QSortFilterProxyModel::mapToSource(proxyIndex);
    if (!proxyIndex.isValid() || proxyIndex.row() >= rowCount())
        return {};
    return m_source->index(m_rows[proxyIndex.row()], proxyIndex.column());
}

QModelIndex ScheduleProxyModel::mapFromSource(const QModelIndex &sourceIndex) const
{
    if (!m_source)
        return QSortFilterProxyModel::mapFromSource(sourceIndex);
    return sourceIndex.isValid() ? index(proxyRow(sourceIndex.row()), sourceIndex.column()) : QModelIndex();
}

QModelIndex ScheduleProxyModel::index(int row, int column, const QModelIndex &parent) const
{
    if (!m_source)
        return QSortFilterProxyModel::index(row, column, parent);
    return hasIndex(row, column, parent) ? createIndex(row, column) : QModelIndex();
}

QModelIndex ScheduleProxyModel::parent(const QModelIndex &child) const
{
    return m_source ? QModelIndex() : QSortFilterProxyModel::parent(child);
}

QModelIndex ScheduleProxyModel::sibling(int row, int column, const QModelIndex &index) const
{
    return m_source ? this->index(row, column) : QSortFilterProxyModel::sibling(row, column, index);
}

int ScheduleProxyModel::rowCount(const QModelIndex &parent) const
{
    if (!m_source)
        return QSortFilterProxyModel::rowCount(parent);
    return parent.isValid() ? 0 : int(m_rows.size());
}

int ScheduleProxyModel::columnCount(const QModelIndex &parent) const
{
    return m_source ? m_source->columnCount(parent) : QSortFilterProxyModel::columnCount(parent);
}

bool ScheduleProxyModel::hasChildren(const QModelIndex &parent) const
{
    return m_source ? rowCount(parent) > 0 : QSortFilterProxyModel::hasChildren(parent);
}

QVariant ScheduleProxyModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    return m_source ? m_source->headerData(section, orientation, role)
                    : QSortFilterProxyModel::headerData(section, orientation, role);
}

bool ScheduleProxyModel::setHeaderData(int section, Qt::Orientation orientation, const QVariant &value, int role)
{
    return !m_source && QSortFilterProxyModel::setHeaderData(section, orientation, value, role);
}

bool ScheduleProxyModel::insertRows(int row, int count, const QModelIndex &parent)
{
    return !m_source && QSortFilterProxyModel::insertRows(row, count, parent);
}

bool ScheduleProxyModel::insertColumns(int column, int count, const QModelIndex &parent)
{
    return !m_source && QSortFilterProxyModel::insertColumns(column, count, parent);
}

bool ScheduleProxyModel::removeRows(int row, int count, const QModelIndex &parent)
{
    return !m_source && QSortFilterProxyModel::removeRows(row, count, parent);
}

bool ScheduleProxyModel::removeColumns(int column, int count, const QModelIndex &parent)
{
    return !m_source && QSortFilterProxyModel::removeColumns(column, count, parent);
}

void ScheduleProxyModel::sort(int column, Qt::SortOrder order)
{
    if (!m_source) {
        QSortFilterProxyModel::sort(column, order);
        return;
    }
    // Every change keeps the rows sorted, so the same order needs no work.
    if (column == m_sortColumn && order == m_sortOrder)
        return;
    m_sortColumn = column;
    m_sortOrder = order;
    m_ordered = ScheduleOrder(*m_source, m_sortColumn, m_sortOrder).sorted(std::move(m_ordered));
    changeLayout(matchingAmong(m_ordered));
}

bool ScheduleProxyModel::filterAcceptsRow(int row, const QModelIndex &parent) const
{
    if (!m_source)
        return QSortFilterProxyModel::filterAcceptsRow(row, parent);
    if (row < 0 || row >= m_source->rowCount())
        return false;
    return !matchingAmong({row}).empty() && acceptsRecord(m_source->recordAt(row));
}

bool ScheduleProxyModel::acceptsRecord(const orvex::SCHEDULE_DATA &record) const
{
    if (!m_modes.contains(record.type))
        return false;
    return record.type != orvex::SchedulePersonal || record.workerId == 0 || m_source->hasEmployeeName(record.workerId);
}

ScheduleProxyModel::Rows ScheduleProxyModel::allRows() const
{
    Rows all(m_source->rowCount());
    std::iota(all.begin(), all.end(), 0);
    return all;
}

ScheduleProxyModel::Rows ScheduleProxyModel::acceptedAmong(const Rows &rows) const
{
    Rows accepted;
    for (const int row : rows) {
        if (acceptsRecord(m_source->recordAt(row)))
            accepted.push_back(row);
    }
    return ScheduleOrder(*m_source, m_sortColumn, m_sortOrder).sorted(std::move(accepted));
}

ScheduleProxyModel::Rows ScheduleProxyModel::matchingAmong(const Rows &rows) const
{
    if (m_foldedPattern.isEmpty())
        return rows;
    const QStringMatcher matcher(m_foldedPattern);
    Rows matching;
    for (const int row : rows) {
        const QStringView name = m_source->foldedName(row);
        if (matcher.indexIn(name.data(), int(name.size())) >= 0)
            matching.push_back(row);
    }
    return matching;
}

int ScheduleProxyModel::proxyRow(int sourceRow) const
{
    if (m_positions.empty()) {
        m_positions.assign(m_source->rowCount(), -1);
        for (std::size_t i = 0; i < m_rows.size(); ++i)
            m_positions[m_rows[i]] = int(i);
    }
    return sourceRow < int(m_positions.size()) ? m_positions[sourceRow] : -1;
}

void ScheduleProxyModel::rebuild()
{
    m_ordered = acceptedAmong(allRows());
    changeLayout(matchingAmong(m_ordered));
}

void ScheduleProxyModel::recordsInserted(int first, int last)
{
    const int count = last - first + 1;
    const auto moveDown = [first, count](int &row) { row += row >= first ? count : 0; };
    std::for_each(m_ordered.begin(), m_ordered.end(), moveDown);
    std::for_each(m_rows.begin(), m_rows.end(), moveDown);
    m_positions.clear();
    Rows rows(last - first + 1);
    std::iota(rows.begin(), rows.end(), first);
    reinsert(rows, acceptedAmong(rows));
}

void ScheduleProxyModel::recordsRemoved(const Rows &rows)
{
    Rows removedBefore(m_source->rowCount() + rows.size()); // by row of the old numbering
    for (const int row : rows)
        removedBefore[row] = 1;
    std::partial_sum(removedBefore.cbegin(), removedBefore.cend(), removedBefore.begin());
    const auto moveUp = [&removedBefore](int &row) { row -= removedBefore[row]; };
    std::for_each(m_ordered.begin(), m_ordered.end(), moveUp);
    std::for_each(m_rows.begin(), m_rows.end(), moveUp);
    m_positions.clear();
}

void ScheduleProxyModel::reinsert(const Rows &rows, const Rows &accepted)
{
    Rows removed;
    for (const int row : rows) {
        const int position = proxyRow(row);
        if (position >= 0)
            removed.push_back(position);
    }
    std::sort(removed.begin(), removed.end());

    const ScheduleOrder order(*m_source, m_sortColumn, m_sortOrder);
    Rows inserted;
    if (m_foldedPattern.isEmpty()) {
        m_ordered = merged(m_ordered, removed, accepted, order, inserted);
        setRows(m_ordered, removed, inserted);
        return;
    }
    Marks changed(m_source->rowCount());
    for (const int row : rows)
        changed[row] = true;
    m_ordered = merged(m_ordered, positionsOf(m_ordered, changed), accepted, order, inserted);
    inserted.clear();
    Rows next = merged(m_rows, removed, matchingAmong(accepted), order, inserted);
    setRows(std::move(next), removed, inserted);
}

void ScheduleProxyModel::setRows(Rows next, const Rows &removed, const Rows &inserted)
{
    const auto isSame = [this, &next](int position) { return next[position] == m_rows[position]; };
    if (removed == inserted && std::all_of(inserted.cbegin(), inserted.cend(), isSame)) {
        signalChanged(inserted);
    } else if (inserted.empty() && areFewRuns(removed)) {
        removeRuns(removed);
    } else if (removed.empty() && areFewRuns(inserted)) {
        insertRuns(inserted, next);
    } else {
        const bool sameSize = next.size() == m_rows.size();
        const int first = sameSize ? std::min(removed.front(), inserted.front()) : 0;
        const int end = sameSize ? std::max(removed.back(), inserted.back()) + 1 : int(next.size());
        changeLayout(std::move(next), first, end);
        signalChanged(inserted);
    }
}

void ScheduleProxyModel::signalChanged(const Rows &proxyRows)
{
    if (proxyRows.empty())
        return;
    const auto signalRun = [this](int first, int last) {
        emit dataChanged(index(first, 0), index(last, ScheduleModel::ColumnCount - 1));
    };
    if (areFewRuns(proxyRows))
        forEachRun(proxyRows, signalRun);
    else
        signalRun(proxyRows.front(), proxyRows.back());
}

void ScheduleProxyModel::removeRuns(const Rows &proxyRows)
{
    std::vector<std::pair<int, int>> runs;
    forEachRun(proxyRows, [&runs](int first, int last) { runs.emplace_back(first, last); });
    std::for_each(runs.crbegin(), runs.crend(), [this](const auto &run) {
        beginRemoveRows({}, run.first, run.second);
        m_rows.erase(m_rows.begin() + run.first, m_rows.begin() + run.second + 1);
        m_positions.clear();
        endRemoveRows();
    });
}

void ScheduleProxyModel::insertRuns(const Rows &proxyRows, const Rows &next)
{
    forEachRun(proxyRows, [this, &next](int first, int last) {
        beginInsertRows({}, first, last);
        m_rows.insert(m_rows.begin() + first, next.cbegin() + first, next.cbegin() + last + 1);
        m_positions.clear();
        endInsertRows();
    });
}

void ScheduleProxyModel::changeLayout(Rows next)
{
    const int end = int(std::max(next.size(), m_rows.size()));
    if (end > 0)
        changeLayout(std::move(next), 0, end);
}

void ScheduleProxyModel::changeLayout(Rows next, int first, int end)
{
    emit layoutAboutToBeChanged();
    const QModelIndexList before = persistentIndexList();
    Rows sourceRows;
    sourceRows.reserve(before.size());
    for (const QModelIndex &index : before)
        sourceRows.push_back(m_rows[index.row()]);

    const bool keepsPositions = next.size() == m_rows.size() && !m_positions.empty();
    for (int i = first; keepsPositions && i < end; ++i)
        m_positions[m_rows[i]] = -1;
    m_rows = std::move(next);
    for (int i = first; keepsPositions && i < end; ++i)
        m_positions[m_rows[i]] = i;
    if (!keepsPositions)
        m_positions.clear();

    QModelIndexList after;
    after.reserve(before.size());
    for (int i = 0; i < before.size(); ++i)
        after.append(index(proxyRow(sourceRows[i]), before.at(i).column()));
    changePersistentIndexList(before, after);
    emit layoutChanged();
}
