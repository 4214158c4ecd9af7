#include "editortablemodel.h"

EditorTableModel::EditorTableModel(orvex::SCHEDULE_DATA *schedule, const QStringList &titles, QObject *parent)
    : QAbstractItemModel(parent)
    , m_schedule(schedule)
    , m_titles(titles)
{
}

int EditorTableModel::rowCount(const QModelIndex &parent) const
{
    return m_schedule && !parent.isValid() ? itemCount() : 0;
}

int EditorTableModel::columnCount(const QModelIndex &) const
{
    return m_titles.size();
}

QModelIndex EditorTableModel::index(int row, int column, const QModelIndex &parent) const
{
    return hasIndex(row, column, parent) ? createIndex(row, column) : QModelIndex();
}

QModelIndex EditorTableModel::parent(const QModelIndex &) const
{
    return {};
}

QVariant EditorTableModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole || section < 0 || section >= m_titles.size())
        return {};
    return m_titles.at(section);
}

Qt::ItemFlags EditorTableModel::flags(const QModelIndex &index) const
{
    return index.isValid() ? Qt::ItemIsSelectable | Qt::ItemIsEnabled : Qt::NoItemFlags;
}

bool EditorTableModel::hasRow(const QModelIndex &index) const
{
    return index.isValid() && index.row() < rowCount();
}
