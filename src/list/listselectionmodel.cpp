#include "listselectionmodel.h"

namespace scheduleview {

ListSelectionModel::ListSelectionModel(QAbstractItemModel *model, QObject *parent)
    : QItemSelectionModel(nullptr, parent)
{
    // The base's own slots come between ours.
    connect(model, &QAbstractItemModel::layoutAboutToBeChanged, this, &ListSelectionModel::rememberRows);
    setModel(model);
    connect(model, &QAbstractItemModel::layoutChanged, this, &ListSelectionModel::tellLostRows);
}

int ListSelectionModel::rowCount() const
{
    int rows = 0;
    for (const auto &range : selection())
        rows += range.isValid() ? range.height() : 0;
    return rows;
}

void ListSelectionModel::rememberRows()
{
    m_rows = rowCount();
    // An empty addition keeps the base from its short cut for a selection of everything.
    if (m_rows > 0 && m_rows == model()->rowCount())
        select(QItemSelection(), Select);
}

void ListSelectionModel::tellLostRows()
{
    if (rowCount() != m_rows)
        emit selectionChanged({}, {});
}

} // namespace scheduleview
