#include "objecttreeproxy.h"

#include "datanames.h"
#include "localstorage.h"
#include "objecttreemodel.h"
#include "tqglobals.h"

#include <QStringMatcher>

#include <algorithm>
#include <iterator>
#include <numeric>

using orvex::ObjectTreeModel;

namespace {

QString searchText(const orvex::ObjectInfo &object)
{
    const QString text = TQGlobals::objectName(object) + QLatin1Char(' ') + object.parameter(db::param::WORKERNUM);
    return TQGlobals::searchText(text).simplified();
}

} // namespace

ObjectTreeProxy::ObjectTreeProxy(QObject *parent)
    : QSortFilterProxyModel(parent)
{
    connect(orvex::LocalStorage::instance(), &orvex::LocalStorage::objectChanged, this,
            &ObjectTreeProxy::objectsChanged);
}

void ObjectTreeProxy::setTypeFilter(const QStringList &types)
{
    if (types == m_types)
        return;
    m_types = types;
    m_entriesValid = false;
    refilter();
}

void ObjectTreeProxy::setIdFilter(const QSet<quint32> &ids)
{
    if (ids == m_ids)
        return;
    m_ids = ids;
    refilter();
}

void ObjectTreeProxy::setSearchIndex(const QString &dataName)
{
    if (dataName == m_searchIndex)
        return;
    m_searchIndex = dataName;
    m_entriesValid = false;
    refilter();
}

void ObjectTreeProxy::setSearchEnabled(bool enabled)
{
    if (enabled == m_searchEnabled)
        return;
    m_searchEnabled = enabled;
    refilter();
}

void ObjectTreeProxy::setReadOnly(bool readOnly)
{
    m_readOnly = readOnly;
}

void ObjectTreeProxy::setFilter(const QString &text)
{
    m_filter = text;
    const QStringList words = TQGlobals::searchText(text).simplified().split(QLatin1Char(' '), Qt::SkipEmptyParts);
    if (words == m_words)
        return;
    m_words = words;
    refilter();
}

bool ObjectTreeProxy::hasFilterResult() const
{
    if (!isSearching())
        return false;
    search();
    return m_hasFound;
}

void ObjectTreeProxy::setSourceModel(QAbstractItemModel *model)
{
    if (sourceModel())
        disconnect(sourceModel(), nullptr, this, nullptr);
    m_entriesValid = false;
    m_shownValid = false;
    m_tree = qobject_cast<ObjectTreeModel *>(model);
    Q_ASSERT(m_tree || !model);
    QSortFilterProxyModel::setSourceModel(model);
    if (!model)
        return;
    connect(model, &QAbstractItemModel::modelReset, this, &ObjectTreeProxy::sourceChanged);
    connect(model, &QAbstractItemModel::layoutChanged, this, &ObjectTreeProxy::sourceChanged);
    connect(model, &QAbstractItemModel::rowsInserted, this, &ObjectTreeProxy::sourceChanged);
    connect(model, &QAbstractItemModel::rowsRemoved, this, &ObjectTreeProxy::sourceChanged);
    connect(model, &QAbstractItemModel::rowsMoved, this, &ObjectTreeProxy::sourceChanged);
    connect(model, &QAbstractItemModel::dataChanged, this, &ObjectTreeProxy::sourceChanged);
}

Qt::ItemFlags ObjectTreeProxy::flags(const QModelIndex &index) const
{
    const Qt::ItemFlags flags = QSortFilterProxyModel::flags(index);
    const Qt::ItemFlags changing =
        Qt::ItemIsEditable | Qt::ItemIsUserCheckable | Qt::ItemIsDragEnabled | Qt::ItemIsDropEnabled;
    return m_readOnly ? flags & ~changing : flags;
}

bool ObjectTreeProxy::setData(const QModelIndex &index, const QVariant &value, int role)
{
    return !m_readOnly && QSortFilterProxyModel::setData(index, value, role);
}

bool ObjectTreeProxy::filterAcceptsRow(int sourceRow, const QModelIndex &sourceParent) const
{
    const QModelIndex source = sourceModel()->index(sourceRow, ObjectTreeModel::IdColumn, sourceParent);
    if (!isSearching() && m_ids.isEmpty())
        return isTypeShown(source);
    search();
    return shownAs(source) != NotShown || (isInsideFoundUnit(source) && isTypeShown(source));
}

bool ObjectTreeProxy::lessThan(const QModelIndex &left, const QModelIndex &right) const
{
    const int order = sortRole() == ObjectTreeModel::SortRole
        ? m_tree->sortKey(left).compare(m_tree->sortKey(right))
        : left.data(sortRole()).toString().compare(right.data(sortRole()).toString());
    // A stable order of equal names.
    return order != 0 ? order < 0 : objectId(left) < objectId(right);
}

bool ObjectTreeProxy::isSearching() const
{
    return m_searchEnabled && !m_searchIndex.isEmpty() && !m_words.isEmpty();
}

quint32 ObjectTreeProxy::objectId(const QModelIndex &source) const
{
    return m_tree->id(source);
}

ObjectTreeProxy::Shown ObjectTreeProxy::shownAs(const QModelIndex &source) const
{
    const auto entry = m_entryOfId.constFind(objectId(source));
    return entry == m_entryOfId.constEnd() ? NotShown : m_shown[std::size_t(*entry)];
}

bool ObjectTreeProxy::isTypeShown(const QModelIndex &source) const
{
    return m_types.isEmpty()
        || m_types.contains(source.sibling(source.row(), ObjectTreeModel::TypeColumn).data().toString());
}

void ObjectTreeProxy::sourceChanged()
{
    if (!isSearching() && m_ids.isEmpty()) {
        m_entriesValid = false;
        return;
    }
    // One search for a series of changes. Until then the visible rows stay and new ones are hidden.
    if (m_searchPending)
        return;
    m_searchPending = true;
    QMetaObject::invokeMethod(this, &ObjectTreeProxy::searchAgain, Qt::QueuedConnection);
}

void ObjectTreeProxy::searchAgain()
{
    m_searchPending = false;
    m_entriesValid = false;
    refilter();
    emit searchedAgain();
}

void ObjectTreeProxy::objectsChanged(const QString &dataName)
{
    if (dataName == m_searchIndex)
        sourceChanged();
}

void ObjectTreeProxy::refilter()
{
    m_shownValid = false;
    if (sourceModel())
        invalidate();
}

void ObjectTreeProxy::search() const
{
    if (m_shownValid)
        return;
    m_shownValid = true;
    if (!m_entriesValid)
        collectEntries();
    m_shown.assign(m_entries.size(), NotShown);
    const std::vector<int> found = matches();
    m_hasFound = !found.empty();
    std::vector<int> units;
    for (const int entry : found) {
        if (m_entries[std::size_t(entry)].leaf)
            showWithAncestors(entry);
        else
            units.push_back(entry);
    }
    const auto isShown = [this](int entry) { return m_shown[std::size_t(entry)] != NotShown; };
    units.erase(std::remove_if(units.begin(), units.end(), isShown), units.end());
    // A unit inside another has a later entry, so the inner units are handled first.
    for (auto unit = units.crbegin(); unit != units.crend(); ++unit) {
        const Shown shown = isShown(*unit) ? ShownWithLeaves : ShownWhole;
        showWithAncestors(*unit);
        if (isSearching())
            m_shown[std::size_t(*unit)] = shown;
    }
}

void ObjectTreeProxy::collectEntries() const
{
    m_entriesValid = true;
    m_entries.clear();
    m_texts.clear();
    m_entryOfId.clear();
    addEntries({}, -1);
}

void ObjectTreeProxy::addEntries(const QModelIndex &sourceParent, int parentEntry) const
{
    const QAbstractItemModel *source = sourceModel();
    const orvex::ObjectHash *objects = orvex::LocalStorage::instance()->constObjects(m_searchIndex);
    for (int row = 0; row < source->rowCount(sourceParent); ++row) {
        const QModelIndex index = source->index(row, ObjectTreeModel::IdColumn, sourceParent);
        if (!isTypeShown(index))
            continue;
        const auto entry = m_entries.size();
        const quint32 id = objectId(index);
        m_entryOfId.insert(id, int(entry));
        m_entries.push_back({id, parentEntry, m_texts.size(), true});
        const auto object = objects->constFind(id);
        if (object != objects->constEnd())
            m_texts += searchText(*object);
        m_texts += QLatin1Char('\n');
        addEntries(index, int(entry));
        m_entries[entry].leaf = m_entries.size() == entry + 1;
    }
}

std::vector<int> ObjectTreeProxy::matches() const
{
    std::vector<int> found(m_entries.size());
    std::iota(found.begin(), found.end(), 0);
    if (!m_ids.isEmpty()) {
        const auto isOther = [this](int entry) { return !m_ids.contains(m_entries[std::size_t(entry)].id); };
        found.erase(std::remove_if(found.begin(), found.end(), isOther), found.end());
    }
    if (!isSearching())
        return found;
    for (const QString &word : m_words) {
        const std::vector<int> with = entriesWith(word);
        std::vector<int> both;
        std::set_intersection(found.cbegin(), found.cend(), with.cbegin(), with.cend(), std::back_inserter(both));
        found = std::move(both);
    }
    return found;
}

std::vector<int> ObjectTreeProxy::entriesWith(const QString &word) const
{
    // All texts in one pass, instead of one search for each entry.
    const QStringMatcher matcher(word);
    std::vector<int> found;
    auto next = m_entries.cbegin();
    for (int at = matcher.indexIn(m_texts); at >= 0; at = matcher.indexIn(m_texts, next->textStart)) {
        next = std::find_if(next, m_entries.cend(), [at](const Entry &entry) { return entry.textStart > at; });
        found.push_back(int(next - m_entries.cbegin()) - 1);
        if (next == m_entries.cend())
            break;
    }
    return found;
}

void ObjectTreeProxy::showWithAncestors(int entry) const
{
    for (; entry >= 0 && m_shown[std::size_t(entry)] == NotShown; entry = m_entries[std::size_t(entry)].parent)
        m_shown[std::size_t(entry)] = ShownAlone;
}

bool ObjectTreeProxy::isInsideFoundUnit(const QModelIndex &source) const
{
    const QModelIndex parent = source.parent();
    for (QModelIndex above = parent; above.isValid(); above = above.parent()) {
        const Shown shown = shownAs(above);
        if (shown == NotShown)
            continue;
        const bool ownLeaf = shown == ShownWithLeaves && above == parent && sourceModel()->rowCount(source) == 0;
        return ownLeaf || shown == ShownWhole;
    }
    return false;
}
