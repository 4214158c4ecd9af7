#include "listselectionmodel.h"

namespace scheduleview {

ListSelectionModel::ListSelectionModel(QAbstractItemModel *model, QObject *parent)
    : QItemSelectionModel(nullptr, parent)
{
    // The slots of the base class, which setModel() connects, must run between these two.
    connect(model, &QAbstractItemModel::layoutAboutToBeChanged, this, &ListSelectionModel::countRows);
    setModel(model);
    connect(model, &QAbstractItemModel::layoutChanged, this, &ListSelectionModel::reportLostRows);
}

int ListSelectionModel::rowCount() const
{
    int rows = 0;
    for (const auto &range : selection())
        rows += range.isValid() ? range.height() : 0;
    return rows;
}

void ListSelectionModel::countRows()
{
    m_rowCountBefore = rowCount();
    // The base class has a shortcut for a selection of all rows. Adding an empty selection disables it.
    if (m_rowCountBefore > 0 && m_rowCountBefore == model()->rowCount())
        select(QItemSelection(), Select);
}

void ListSelectionModel::reportLostRows()
{
    if (rowCount() != m_rowCountBefore)
        emit selectionChanged({}, {});
}

} // namespace scheduleview
