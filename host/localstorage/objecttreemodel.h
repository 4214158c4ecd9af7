#pragma once

#include "localstorage_export.h"

#include <QAbstractItemModel>
#include <QSet>

#include <memory>
#include <unordered_map>
#include <vector>

namespace orvex {

class LocalStorage;
struct ObjectInfo;

/// The objects of one data name as a tree by their parameter "PT_PARENT". It follows the storage's signals.
///
/// Every object of the storage has exactly one row. An object whose parent is missing or is in a cycle with it is shown
/// under the root of the organisation, or at the top if there is no root, until the parent is valid. The rows of one
/// parent have no particular order.
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
        NameRole = Qt::UserRole + 1, ///< display name
        /// A sort key: units before employees, no difference of case or between "е" and "ё", numbers by their value.
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

    /// The value of `SortRole` and the identifier for a valid \a index, without the cost of a QVariant.
    [[nodiscard]] const QString &sortKey(const QModelIndex &index) const;
    [[nodiscard]] quint32 id(const QModelIndex &index) const;

private:
    struct Node
    {
        quint32 id = 0;
        int row = 0;
        Node *parent = nullptr; ///< null for the top, and for a new node without a row
        std::vector<Node *> children;
        QString sortKey;
        bool placing = false; ///< the node is being placed, see `placeNew`
    };

    [[nodiscard]] const ObjectInfo *object(quint32 id) const;
    [[nodiscard]] Node *node(quint32 id);
    [[nodiscard]] Node *nodeAt(const QModelIndex &index) const;
    [[nodiscard]] QModelIndex indexOf(const Node *node) const;

    void reload();
    void onObjectChanged(const QString &dataName, const QList<quint32> &ids);
    void onObjectRemoved(const QString &dataName, const QList<quint32> &ids);
    [[nodiscard]] bool concernsRoot(const QList<quint32> &ids) const;
    Node *addNode(quint32 id);
    void placeNew(Node *node);
    void update(Node *node);
    void retryMisplaced();
    void moveToWantedParent(Node *node);
    /// The parent that the object names; null if there is none or if it is below \a child.
    [[nodiscard]] Node *namedParent(const Node &child);
    /// The parent under which \a node is shown now. Updates `m_misplaced`.
    [[nodiscard]] Node *wantedParent(Node *node);
    static void link(Node *node, Node *parent);
    static void unlink(Node *node);
    void removeRow(Node *node);

    LocalStorage *m_storage;
    const QString m_dataName;
    std::unique_ptr<Node> m_top; ///< the invisible parent of the top rows
    Node *m_root = nullptr; ///< the root of the organisation; `m_top` if there is none
    std::unordered_map<quint32, Node> m_nodes; ///< the addresses of the values are stable
    QSet<quint32> m_misplaced; ///< objects that are not under the parent that they name
};

} // namespace orvex
