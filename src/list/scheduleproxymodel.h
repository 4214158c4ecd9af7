#pragma once

#include "schedules.h"

#include <QPointer>
#include <QSortFilterProxyModel>

#include <vector>

class ScheduleModel;

/// Chooses the schedules of a tab by type and by search text, and sorts them.
///
/// Over a `ScheduleModel` it keeps a row mapping of its own: the same rows in the same order as the base class would
/// give (ties go by name, so the order does not depend on history), at a cost that follows the change. It reads the
/// search text from `setFilterFixedString` and always looks for it in the name, regardless of case. Over any other
/// model it is the base class.
class ScheduleProxyModel : public QSortFilterProxyModel
{
    Q_OBJECT

public:
    using Modes = QList<orvex::ScheduleMode>;

    explicit ScheduleProxyModel(QObject *parent = nullptr);

    /// The accepted types; empty at first.
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
    using Rows = std::vector<int>; ///< rows of the source
    using Marks = std::vector<bool>; ///< by row of the source

    void connectSource();
    void clearRows();

    [[nodiscard]] bool acceptsRecord(const orvex::SCHEDULE_DATA &record) const;
    [[nodiscard]] Rows allRows() const;
    /// Those of \a rows that mode and employee let through, sorted.
    [[nodiscard]] Rows acceptedAmong(const Rows &rows) const;
    [[nodiscard]] Rows matchingAmong(const Rows &rows) const;
    [[nodiscard]] int proxyRow(int sourceRow) const;

    void rebuild();
    void recordsInserted(int first, int last);
    void recordsRemoved(const Rows &rows);
    /// Takes \a rows out and merges \a accepted, those of them that belong here, back in.
    void place(const Rows &rows, const Rows &accepted);

    /// Shows \a next in place of m_rows, from which it differs by what stood at the rows \a left and now stands at
    /// \a came.
    void show(Rows next, const Rows &left, const Rows &came);
    void announceChanged(const Rows &proxyRows);
    void removeRuns(const Rows &proxyRows);
    void insertRuns(const Rows &proxyRows, const Rows &next);
    void showAsNewLayout(Rows next);
    /// Outside \a first to \a end, exclusive, \a next is as m_rows; both are of one size, or this is all of them.
    void showAsNewLayout(Rows next, int first, int end);

    QPointer<ScheduleModel> m_source; ///< null over any other model
    std::vector<QMetaObject::Connection> m_connections;
    Modes m_modes;
    QString m_pattern; ///< the search text
    QString m_needle; ///< the same, case-folded
    int m_sortColumn = -1; ///< -1: the source's order
    Qt::SortOrder m_sortOrder = Qt::AscendingOrder;
    Rows m_ordered; ///< what mode and employee let through, sorted
    Rows m_rows; ///< those of m_ordered whose name holds the search text: what is shown
    mutable Rows m_positions; ///< row here by row of the source, -1 if not shown; empty until asked for
};
