#include "objecttreemodel.h"

#include "localstorage.h"
#include "tqglobals.h"

#include <QIcon>

#include <algorithm>

namespace orvex {

namespace {

/// Units stand before the employees beside them.
QChar typeRank(const QString &type)
{
    static const QStringList ranks{db::orgstructure::SUBJECTROOT, db::orgstructure::FIRM, db::orgstructure::DEPARTMENT};
    const int rank = ranks.indexOf(type);
    return QChar(ushort('0' + (rank < 0 ? ranks.size() : rank)));
}

/// A number is compared by its count of digits first, so that 2 stands before 10.
void appendNumber(QString &key, QStringView digits)
{
    constexpr int MaximumDigits = 60;
    while (digits.size() > 1 && digits.front() == QLatin1Char('0'))
        digits = digits.mid(1);
    key += QChar(ushort('0' + std::min(int(digits.size()), MaximumDigits)));
    key.append(digits.data(), int(digits.size()));
}

QString sortKeyOf(const ObjectInfo &object)
{
    const QString name = TQGlobals::searchText(TQGlobals::objectName(object));
    QString key(typeRank(object.type));
    key.reserve(name.size() + 2);
    for (int i = 0; i < name.size();) {
        const int start = i;
        while (i < name.size() && name.at(i).isDigit())
            ++i;
        if (i > start)
            appendNumber(key, QStringView(name).mid(start, i - start));
        else
            key += name.at(i++);
    }
    return key;
}

QIcon icon(const ObjectInfo &object)
{
    const QString name = QLatin1String("object-") + object.type;
    const QString deletedName = name + QLatin1String("-d");
    return QIcon::fromTheme(TQGlobals::isDeleted(object) && QIcon::hasThemeIcon(deletedName) ? deletedName : name);
}

QString toolTip(const ObjectInfo &object)
{
    QStringList lines{TQGlobals::objectName(object), object.parameter(db::param::POSITION)};
    const QString number = object.parameter(db::param::WORKERNUM);
    lines.append(number.isEmpty() ? QString() : ObjectTreeModel::tr("Табельный номер: %1").arg(number));
    lines.removeAll(QString());
    for (QString &line : lines)
        line = line.toHtmlEscaped();
    // Marked as rich text, so that a name is never taken for markup.
    return lines.isEmpty() ? QString() : QStringLiteral("<qt>%1</qt>").arg(lines.join(QLatin1String("<br/>")));
}

} // namespace

struct ObjectTreeModel::Node
{
    ~Node() { qDeleteAll(children); }

    quint32 id = 0;
    int row = 0;
    Node *parent = nullptr; ///< null for the top and for one that has no place yet
    std::vector<Node *> children; ///< owned
    QString sortKey;
    bool placing = false;
};

ObjectTreeModel::ObjectTreeModel(LocalStorage *storage, const QString &dataName)
    : QAbstractItemModel(storage)
    , m_storage(storage)
    , m_dataName(dataName)
{
    reload();
    connect(storage, &LocalStorage::objectChanged, this, &ObjectTreeModel::onObjectChanged);
    connect(storage, &LocalStorage::objectRemoved, this, &ObjectTreeModel::onObjectRemoved);
}

ObjectTreeModel::~ObjectTreeModel() = default;

QModelIndex ObjectTreeModel::index(int row, int column, const QModelIndex &parent) const
{
    if (!hasIndex(row, column, parent))
        return {};
    return createIndex(row, column, nodeAt(parent)->children[std::size_t(row)]);
}

QModelIndex ObjectTreeModel::parent(const QModelIndex &child) const
{
    return child.isValid() ? indexOf(nodeAt(child)->parent) : QModelIndex();
}

int ObjectTreeModel::rowCount(const QModelIndex &parent) const
{
    return parent.column() > 0 ? 0 : int(nodeAt(parent)->children.size());
}

int ObjectTreeModel::columnCount(const QModelIndex & /*parent*/) const
{
    return ColumnCount;
}

QVariant ObjectTreeModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid())
        return {};
    const Node &node = *nodeAt(index);
    if (role == SortRole)
        return node.sortKey;
    if (role == Qt::DisplayRole && index.column() == IdColumn)
        return node.id;
    const ObjectInfo *known = object(node.id);
    if (!known)
        return {};
    if (index.column() == TypeColumn)
        return role == Qt::DisplayRole ? QVariant(known->type) : QVariant();
    switch (role) {
    case Qt::DecorationRole:
        return icon(*known);
    case NameRole:
    case Qt::AccessibleTextRole:
        return TQGlobals::objectName(*known);
    case Qt::ToolTipRole:
        return toolTip(*known);
    default:
        return {};
    }
}

Qt::ItemFlags ObjectTreeModel::flags(const QModelIndex &index) const
{
    return index.isValid() ? Qt::ItemIsSelectable | Qt::ItemIsEnabled : Qt::NoItemFlags;
}

const QString &ObjectTreeModel::sortKey(const QModelIndex &index) const
{
    return nodeAt(index)->sortKey;
}

quint32 ObjectTreeModel::id(const QModelIndex &index) const
{
    return nodeAt(index)->id;
}

const ObjectInfo *ObjectTreeModel::object(quint32 id) const
{
    const ObjectHash *objects = m_storage->constObjects(m_dataName);
    const auto found = objects->constFind(id);
    return found == objects->constEnd() ? nullptr : &*found;
}

ObjectTreeModel::Node *ObjectTreeModel::nodeAt(const QModelIndex &index) const
{
    return index.isValid() ? static_cast<Node *>(index.internalPointer()) : m_top.get();
}

QModelIndex ObjectTreeModel::indexOf(const Node *node) const
{
    if (!node || node == m_top.get())
        return {};
    return createIndex(node->row, IdColumn, const_cast<Node *>(node));
}

void ObjectTreeModel::reload()
{
    beginResetModel();
    m_nodes.clear();
    m_misplaced.clear();
    m_top = std::make_unique<Node>();
    m_root = m_top.get();
    const ObjectHash *objects = m_storage->constObjects(m_dataName);
    m_nodes.reserve(objects->size());
    for (auto it = objects->cbegin(); it != objects->cend(); ++it) {
        Node *node = addNode(it.key());
        const bool first = m_root == m_top.get() || node->id < m_root->id;
        if (first && it->type == db::orgstructure::SUBJECTROOT)
            m_root = node;
    }
    for (Node *node : std::as_const(m_nodes))
        link(node, wantedParent(node));
    endResetModel();
}

void ObjectTreeModel::onObjectChanged(const QString &dataName, const QList<quint32> &ids)
{
    if (dataName != m_dataName)
        return;
    QList<quint32> added;
    std::copy_if(ids.cbegin(), ids.cend(), std::back_inserter(added),
                 [this](quint32 id) { return object(id) && !m_nodes.contains(id); });
    if (added.size() > m_nodes.size() || concernsRoot(ids)) {
        reload();
        return;
    }
    std::vector<Node *> changed;
    for (const quint32 id : ids) {
        if (Node *node = m_nodes.value(id))
            changed.push_back(node);
    }
    for (const quint32 id : std::as_const(added))
        addNode(id);
    // New objects get their places before others can move below them.
    for (const quint32 id : std::as_const(added))
        placeNew(m_nodes.value(id));
    for (Node *node : changed)
        announceChanged(node);
    retryMisplaced();
}

void ObjectTreeModel::onObjectRemoved(const QString &dataName, const QList<quint32> &ids)
{
    if (dataName != m_dataName)
        return;
    std::vector<Node *> removed;
    for (const quint32 id : ids) {
        if (Node *node = m_nodes.take(id))
            removed.push_back(node);
        m_misplaced.remove(id);
    }
    if (std::find(removed.cbegin(), removed.cend(), m_root) != removed.cend())
        m_root = m_top.get();
    const auto isRemoved = [this](const Node *node) { return node != m_top.get() && !m_nodes.contains(node->id); };
    for (const Node *node : removed) {
        const std::vector<Node *> children = node->children;
        for (Node *child : children) {
            if (!isRemoved(child))
                moveToWantedParent(child);
        }
    }
    // What is removed together with its parent goes with the parent's row.
    removed.erase(std::remove_if(removed.begin(), removed.end(),
                                 [&isRemoved](const Node *node) { return isRemoved(node->parent); }),
                  removed.end());
    for (Node *node : removed)
        remove(node);
}

bool ObjectTreeModel::concernsRoot(const QList<quint32> &ids) const
{
    return std::any_of(ids.cbegin(), ids.cend(), [this](quint32 id) {
        const ObjectInfo *known = object(id);
        const bool isRootType = known && known->type == db::orgstructure::SUBJECTROOT;
        return isRootType != (m_root != m_top.get() && m_root->id == id);
    });
}

ObjectTreeModel::Node *ObjectTreeModel::addNode(quint32 id)
{
    auto *node = new Node;
    node->id = id;
    node->sortKey = sortKeyOf(*object(id));
    m_nodes.insert(id, node);
    return node;
}

void ObjectTreeModel::placeNew(Node *node)
{
    if (node->parent || node->placing)
        return;
    node->placing = true;
    // Parents first, so that each has its row when its children come.
    if (Node *named = namedParent(*node))
        placeNew(named);
    Node *parent = wantedParent(node);
    // Of new objects that name each other in a circle, one gets its place after those below it.
    const Node *highest = parent;
    while (highest->parent)
        highest = highest->parent;
    const bool shown = highest == m_top.get();
    if (shown)
        beginInsertRows(indexOf(parent), int(parent->children.size()), int(parent->children.size()));
    link(node, parent);
    if (shown)
        endInsertRows();
    node->placing = false;
}

void ObjectTreeModel::announceChanged(Node *node)
{
    node->sortKey = sortKeyOf(*object(node->id));
    moveToWantedParent(node);
    emit dataChanged(indexOf(node), createIndex(node->row, TypeColumn, node));
}

void ObjectTreeModel::retryMisplaced()
{
    const QSet<quint32> misplaced = m_misplaced;
    for (const quint32 id : misplaced)
        moveToWantedParent(m_nodes.value(id));
}

ObjectTreeModel::Node *ObjectTreeModel::namedParent(const Node &node) const
{
    const ObjectInfo *known = object(node.id);
    Node *named = known ? m_nodes.value(known->parameter(db::param::PARENT).toUInt()) : nullptr;
    for (const Node *above = named; above; above = above->parent) {
        if (above == &node)
            return nullptr;
    }
    return named;
}

ObjectTreeModel::Node *ObjectTreeModel::wantedParent(Node *node)
{
    if (node == m_root)
        return m_top.get();
    if (Node *named = namedParent(*node)) {
        m_misplaced.remove(node->id);
        return named;
    }
    if (!object(node->id)->parameter(db::param::PARENT).isEmpty())
        m_misplaced.insert(node->id);
    return m_root;
}

void ObjectTreeModel::link(Node *node, Node *parent)
{
    node->parent = parent;
    node->row = int(parent->children.size());
    parent->children.push_back(node);
}

void ObjectTreeModel::unlink(Node *node)
{
    auto &siblings = node->parent->children;
    siblings.erase(siblings.begin() + node->row);
    for (std::size_t row = std::size_t(node->row); row < siblings.size(); ++row)
        siblings[row]->row = int(row);
    node->parent = nullptr;
}

void ObjectTreeModel::moveToWantedParent(Node *node)
{
    Node *parent = wantedParent(node);
    if (parent == node->parent)
        return;
    // Not as one move: sorting proxies of Qt 5.15 keep stale rows when a parent's own row shifts with it.
    beginRemoveRows(indexOf(node->parent), node->row, node->row);
    unlink(node);
    endRemoveRows();
    const int row = int(parent->children.size());
    beginInsertRows(indexOf(parent), row, row);
    link(node, parent);
    endInsertRows();
}

void ObjectTreeModel::remove(Node *node)
{
    beginRemoveRows(indexOf(node->parent), node->row, node->row);
    unlink(node);
    delete node;
    endRemoveRows();
}

} // namespace orvex
