#pragma once

#include "schedules.h"

#include <QAbstractItemModel>
#include <QStringList>

/// A flat table over an editor's schedule record. The record is not owned, is changed in place and must outlive the
/// model; with a null record there are no rows and every change fails.
class EditorTableModel : public QAbstractItemModel
{
    Q_OBJECT

public:
    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const final;
    [[nodiscard]] int columnCount(const QModelIndex &parent = {}) const final;
    [[nodiscard]] QModelIndex index(int row, int column, const QModelIndex &parent = {}) const final;
    [[nodiscard]] QModelIndex parent(const QModelIndex &child) const final;
    using QObject::parent;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const final;
    [[nodiscard]] Qt::ItemFlags flags(const QModelIndex &index) const override;

protected:
    /// One column per title.
    EditorTableModel(orvex::SCHEDULE_DATA *schedule, const QStringList &titles, QObject *parent);

    [[nodiscard]] orvex::SCHEDULE_DATA *schedule() const { return m_schedule; }
    /// The number of rows; called only with a record.
    [[nodiscard]] virtual int itemCount() const = 0;
    [[nodiscard]] bool hasRow(const QModelIndex &index) const;

    /// Signals an insertion at \a row, but inserts at \a position of \a items.
    template <class Item> void insertItem(QList<Item> &items, int row, int position, const Item &item)
    {
        beginInsertRows({}, row, row);
        items.insert(position, item);
        endInsertRows();
    }

    /// For a row out of range the removal is signalled although nothing is removed.
    template <class Item> void removeItem(QList<Item> &items, int row)
    {
        beginRemoveRows({}, row, row);
        if (row >= 0 && row < items.size())
            items.removeAt(row);
        endRemoveRows();
    }

private:
    orvex::SCHEDULE_DATA *const m_schedule;
    const QStringList m_titles;
};
