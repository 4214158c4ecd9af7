#pragma once

#include "schedules.h"

#include <QPointer>
#include <QSortFilterProxyModel>

#include <vector>

class ScheduleModel;

/// Filters the schedules of a tab by type and by search text, and sorts them.
///
/// For a `ScheduleModel` it replaces the row mapping of the base class: it shows the same rows in the same order, but
/// filters and sorts only the rows that a change affects. Ties are sorted by name, so that the order does not depend on
/// history. The search text of `setFilterFixedString` is always matched with the name, regardless of case. For any
/// other model all calls are passed to the base class.
class ScheduleProxyModel : public QSortFilterProxyModel
{
    Q_OBJECT

public:
    using Modes = QList<orvex::ScheduleMode>;

    explicit ScheduleProxyModel(QObject *parent = nullptr);

    /// The accepted types; initially none.
    [[nodiscard]] Modes mode() const;
    void setMode(const Modes &modes);
    /// `setMode` and `sort` in one pass.
    void setModeAndOrder(const Modes &modes, int column, Qt::SortOrder order);
    void setFilterFixedString(const QString &pattern);
    [[nodiscard]] int sortColumn() const;
    [[nodiscard]] Qt::SortOrder sortOrder() const;

    void setSourceModel(QAbstractItemModel *sourceModel) override;
    [[nodiscard]] QModelIndex mapToSource(const QModelIndex &proxyIndex) const override;
    [[nodiscard]] QModelIndex mapFromSource(const QModelIndex &sourceIndex) const override;
    [[nodiscard]] QModelIndex index(int row, int column, const QModelIndex &parent = {}) const override;
    [[nodiscard]] QModelIndex parent(const QModelIndex &child) const override;
    [[nodiscard]] QModelIndex sibling(int row, int column, const QModelIndex &index) const override;
    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] bool hasChildren(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation,
                                      int role = Qt::DisplayRole) const override;
    bool setHeaderData(int section, Qt::Orientation orientation, const QVariant &value,
                       int role = Qt::EditRole) override;
    bool insertRows(int row, int count, const QModelIndex &parent = {}) override;
    bool insertColumns(int column, int count, const QModelIndex &parent = {}) override;
    bool removeRows(int row, int count, const QModelIndex &parent = {}) override;
    bool removeColumns(int column, int count, const QModelIndex &parent = {}) override;
    void sort(int column, Qt::SortOrder order = Qt::AscendingOrder) override;

protected:
    [[nodiscard]] bool filterAcceptsRow(int row, const QModelIndex &parent) const override;

private:
    using Rows = std::vector<int>; ///< of the source, unless the name says otherwise
    using Marks = std::vector<bool>; ///< by source row

    void connectSource();
    void clearRows();

    [[nodiscard]] bool acceptsRecord(const orvex::SCHEDULE_DATA &record) const;
    [[nodiscard]] Rows allRows() const;
    /// Returns those of \a rows that `acceptsRecord` accepts, sorted.
    [[nodiscard]] Rows acceptedAmong(const Rows &rows) const;
    [[nodiscard]] Rows matchingAmong(const Rows &rows) const;
    [[nodiscard]] int proxyRow(int sourceRow) const;

    void rebuild();
    void recordsInserted(int first, int last);
    void recordsRemoved(const Rows &rows);
    /// Removes \a rows and inserts those of them that are \a accepted at their sorted positions.
    void reinsert(const Rows &rows, const Rows &accepted);

    /// Replaces m_rows by \a next with the narrowest signals. They differ in the rows at the positions \a removed of
    /// m_rows and at the positions \a inserted of \a next.
    void setRows(Rows next, const Rows &removed, const Rows &inserted);
    void signalChanged(const Rows &proxyRows);
    void removeRuns(const Rows &proxyRows);
    void insertRuns(const Rows &proxyRows, const Rows &next);
    void changeLayout(Rows next);
    /// \a next and m_rows differ only from \a first to \a end, exclusive; this is the whole range if their sizes
    /// differ.
    void changeLayout(Rows next, int first, int end);

    QPointer<ScheduleModel> m_source; ///< null for any other model
    std::vector<QMetaObject::Connection> m_connections;
    Modes m_modes;
    QString m_pattern; ///< the search text
    QString m_foldedPattern;
    int m_sortColumn = -1; ///< -1: the source's order
    Qt::SortOrder m_sortOrder = Qt::AscendingOrder;
    Rows m_ordered; ///< the rows that `acceptsRecord` accepts, sorted
    Rows m_rows; ///< those of m_ordered whose name contains the search text: the rows shown
    mutable Rows m_positions; ///< proxy row by source row, -1 if not shown; empty until needed
};
