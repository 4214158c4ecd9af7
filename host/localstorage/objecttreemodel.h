#pragma once

#include "localstorage_export.h"

#include <QAbstractItemModel>
#include <QHash>
#include <QSet>

#include <memory>
#include <vector>

namespace orvex {

class LocalStorage;
struct ObjectInfo;

/// The objects of one data name as a tree by their parameter "PT_PARENT", in step with the storage's signals.
///
/// Every object of the storage has exactly one row: one whose parent is missing, or leads back to the object itself,
/// stands under the root of the organisation, or at the top while there is none, until its parent is there. Rows of one
/// parent are in no particular order.
class LOCALSTORAGE_EXPORT ObjectTreeModel final : public QAbstractItemModel
{
    Q_OBJECT

public:
    enum Column
    {
        IdColumn, ///< display value: the identifier (uint); decoration: the icon of the type, "-d" for a deleted object
        TypeColumn, ///< display value: the object type, such as "OT_WORKER"
        ColumnCount
    };
    enum Role
    {
        NameRole = Qt::UserRole + 1, ///< what a person reads
        /// Text whose plain comparison gives the order in which people look for names: units before employees, no
        /// difference of case or between "е" and "ё", numbers by their value.
        SortRole = Qt::UserRole + 2
    };

    /// \a storage owns the model.
    ObjectTreeModel(LocalStorage *storage, const QString &dataName);
    ~ObjectTreeModel() override;

    [[nodiscard]] QModelIndex index(int row, int column, const QModelIndex &parent = {}) const override;
    [[nodiscard]] QModelIndex parent(const QModelIndex &child) const override;
    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    [[nodiscard]] Qt::ItemFlags flags(const QModelIndex &index) const override;

    /// The text of `SortRole` and the identifier of a valid \a index, for those who ask ten thousand times in a row.
    [[nodiscard]] const QString &sortKey(const QModelIndex &index) const;
    [[nodiscard]] quint32 id(const QModelIndex &index) const;

private:
    struct Node;

    [[nodiscard]] const ObjectInfo *object(quint32 id) const;
    [[nodiscard]] Node *nodeAt(const QModelIndex &index) const;
    [[nodiscard]] QModelIndex indexOf(const Node *node) const;

    void reload();
    void onObjectChanged(const QString &dataName, const QList<quint32> &ids);
    void onObjectRemoved(const QString &dataName, const QList<quint32> &ids);
    [[nodiscard]] bool concernsRoot(const QList<quint32> &ids) const;
    Node *addNode(quint32 id);
    void placeNew(Node *node);
    void announceChanged(Node *node);
    void retryMisplaced();
    void moveToWantedParent(Node *node);
    /// The parent that the object names; null when there is none, or when it lies below \a node itself.
    [[nodiscard]] Node *namedParent(const Node &node) const;
    /// Where \a node stands best now. Keeps the list of those that could not go where they belong.
    [[nodiscard]] Node *wantedParent(Node *node);
    static void link(Node *node, Node *parent);
    static void unlink(Node *node);
    void remove(Node *node);

    LocalStorage *m_storage;
    const QString m_dataName;
    std::unique_ptr<Node> m_top; ///< has no row; parent of the topmost rows
    Node *m_root = nullptr; ///< the root of the organisation; `m_top` while there is none
    QHash<quint32, Node *> m_nodes; ///< owned
    QSet<quint32> m_misplaced; ///< objects that do not stand under the parent that they name
};

} // namespace orvex
