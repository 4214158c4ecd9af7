#include "objecttreemodel.h"

#include "datanames.h"
#include "localstorage.h"
#include "tqglobals.h"

#include <QIcon>

#include <algorithm>
#include <iterator>
#include <utility>

namespace orvex {

namespace {

/// Units are sorted before employees.
QChar typeRank(const QString &type)
{
    static const QStringList ranks{db::orgstructure::SUBJECTROOT, db::orgstructure::FIRM, db::orgstructure::DEPARTMENT};
    const int rank = ranks.indexOf(type);
    return QChar(ushort('0' + (rank < 0 ? ranks.size() : rank)));
}

/// The count of digits is compared first, so that 2 is before 10.
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
    // Explicit rich text: Qt must not guess from the name.
    return lines.isEmpty() ? QString() : QStringLiteral("<qt>%1</qt>").arg(lines.join(QLatin1String("<br/>")));
}

} // namespace

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
    const ObjectInfo *info = object(node.id);
    if (!info)
        return {};
    if (index.column() == TypeColumn)
        return role == Qt::DisplayRole ? QVariant(info->type) : QVariant();
    switch (role) {
    case Qt::DecorationRole:
        return icon(*info);
    case NameRole:
    case Qt::AccessibleTextRole:
        return TQGlobals::objectName(*info);
    case Qt::ToolTipRole:
        return toolTip(*info);
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

ObjectTreeModel::Node *ObjectTreeModel::node(quint32 id)
{
    const auto found = m_nodes.find(id);
    return found == m_nodes.end() ? nullptr : &found->second;
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
    m_nodes.reserve(std::size_t(objects->size()));
    for (auto it = objects->cbegin(); it != objects->cend(); ++it) {
        Node *node = addNode(it.key());
        const bool first = m_root == m_top.get() || node->id < m_root->id;
        if (first && it->type == db::orgstructure::SUBJECTROOT)
            m_root = node;
    }
    for (auto &entry : m_nodes)
        link(&entry.second, wantedParent(&entry.second));
    endResetModel();
}

void ObjectTreeModel::onObjectChanged(const QString &dataName, const QList<quint32> &ids)
{
    if (dataName != m_dataName)
        return;
    QList<quint32> added;
    std::copy_if(ids.cbegin(), ids.cend(), std::back_inserter(added),
                 [this](quint32 id) { return object(id) && !node(id); });
    if (std::size_t(added.size()) > m_nodes.size() || concernsRoot(ids)) {
        reload();
        return;
    }
    std::vector<Node *> changed;
    for (const quint32 id : ids) {
        if (Node *existing = node(id))
            changed.push_back(existing);
    }
    for (const quint32 id : std::as_const(added))
        addNode(id);
    // New objects get their rows before others can move below them.
    for (const quint32 id : std::as_const(added))
        placeNew(node(id));
    for (Node *existing : changed)
        update(existing);
    retryMisplaced();
}

void ObjectTreeModel::onObjectRemoved(const QString &dataName, const QList<quint32> &ids)
{
    if (dataName != m_dataName)
        return;
    // Extracted nodes keep their addresses until their rows are removed.
    std::vector<decltype(m_nodes)::node_type> removed;
    for (const quint32 id : ids) {
        if (auto extracted = m_nodes.extract(id))
            removed.push_back(std::move(extracted));
        m_misplaced.remove(id);
    }
    const auto isRemoved = [this](const Node *other) { return other != m_top.get() && !node(other->id); };
    if (isRemoved(m_root))
        m_root = m_top.get();
    for (const auto &extracted : removed) {
        const std::vector<Node *> children = extracted.mapped().children;
        for (Node *child : children) {
            if (!isRemoved(child))
                moveToWantedParent(child);
        }
    }
    // A node whose parent is removed as well is removed with the parent's row.
    std::vector<Node *> highest;
    for (auto &extracted : removed) {
        if (!isRemoved(extracted.mapped().parent))
            highest.push_back(&extracted.mapped());
    }
    for (Node *top : highest)
        removeRow(top);
}

bool ObjectTreeModel::concernsRoot(const QList<quint32> &ids) const
{
    return std::any_of(ids.cbegin(), ids.cend(), [this](quint32 id) {
        const ObjectInfo *info = object(id);
        const bool isRootType = info && info->type == db::orgstructure::SUBJECTROOT;
        return isRootType != (m_root != m_top.get() && m_root->id == id);
    });
}

ObjectTreeModel::Node *ObjectTreeModel::addNode(quint32 id)
{
    Node &added = m_nodes[id];
    added.id = id;
    added.sortKey = sortKeyOf(*object(id));
    return &added;
}

void ObjectTreeModel::placeNew(Node *node)
{
    if (node->parent || node->placing)
        return;
    node->placing = true;
    // Parents first, so that each has its row before its children.
    if (Node *named = namedParent(*node))
        placeNew(named);
    Node *parent = wantedParent(node);
    // In a cycle of new objects, one gets its row after those below it.
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

void ObjectTreeModel::update(Node *node)
{
    node->sortKey = sortKeyOf(*object(node->id));
    moveToWantedParent(node);
    emit dataChanged(indexOf(node), createIndex(node->row, TypeColumn, node));
}

void ObjectTreeModel::retryMisplaced()
{
    const QSet<quint32> misplaced = m_misplaced;
    for (const quint32 id : misplaced)
        moveToWantedParent(node(id));
}

ObjectTreeModel::Node *ObjectTreeModel::namedParent(const Node &child)
{
    const ObjectInfo *info = object(child.id);
    Node *named = info ? node(info->parameter(db::param::PARENT).toUInt()) : nullptr;
    for (const Node *above = named; above; above = above->parent) {
        if (above == &child)
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
    // Not one move: a sorting proxy of Qt 5.15 keeps stale rows if the row of a parent changes with it.
    beginRemoveRows(indexOf(node->parent), node->row, node->row);
    unlink(node);
    endRemoveRows();
    const int row = int(parent->children.size());
    beginInsertRows(indexOf(parent), row, row);
    link(node, parent);
    endInsertRows();
}

void ObjectTreeModel::removeRow(Node *node)
{
    beginRemoveRows(indexOf(node->parent), node->row, node->row);
    unlink(node);
    endRemoveRows();
}

} // namespace orvex
