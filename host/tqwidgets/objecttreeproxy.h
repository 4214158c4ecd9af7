#pragma once

#include "tqwidgets_export.h"

#include <QHash>
#include <QSet>
#include <QSortFilterProxyModel>
#include <QStringList>

#include <vector>

namespace orvex {
class ObjectTreeModel;
}

/// A choice of the objects of a tree (`orvex::LocalStorage::model`): of some types, of some identifiers, and of those
/// that a search finds. Sorted by the sort role, it follows every change of its source.
///
/// A search finds an object when each word of the text occurs in its name or in its personnel number, whatever the
/// case. What it finds is shown with the branches that lead there. A unit found by its own name is shown with all that
/// it holds; with its own employees only when other units in it were found, and with nothing more when employees were.
class TQWIDGETS_EXPORT ObjectTreeProxy : public QSortFilterProxyModel
{
    Q_OBJECT

public:
    explicit ObjectTreeProxy(QObject *parent = nullptr);

    /// Shows only objects of these types; what stands below any other object is not shown either. Empty: all types.
    void setTypeFilter(const QStringList &types);
    [[nodiscard]] QStringList typeFilter() const { return m_types; }
    /// Shows only these objects and the branches that lead to them. Empty: all objects.
    void setIdFilter(const QSet<quint32> &ids);
    [[nodiscard]] QSet<quint32> idFilter() const { return m_ids; }
    /// The data name of the objects whose names and numbers are searched. Nothing is found while it is empty.
    void setSearchIndex(const QString &dataName);
    [[nodiscard]] QString searchIndex() const { return m_searchIndex; }
    /// Off at first: every text then shows the whole tree.
    void setSearchEnabled(bool enabled);
    [[nodiscard]] bool isSearchEnabled() const { return m_searchEnabled; }
    /// Keeps views from editing and dragging whatever the source allows. Off at first.
    void setReadOnly(bool readOnly);
    [[nodiscard]] bool isReadOnly() const { return m_readOnly; }

    /// The text to search for; blank: the whole tree. A row that goes with the new text leaves a view's selection
    /// without `selectionChanged`: look at the selection afterwards.
    void setFilter(const QString &text);
    [[nodiscard]] QString filter() const { return m_filter; }
    /// Whether a search is on and found something.
    [[nodiscard]] bool hasFilterResult() const;

    /// \a model: one of `orvex::LocalStorage::model`.
    void setSourceModel(QAbstractItemModel *model) override;
    [[nodiscard]] Qt::ItemFlags flags(const QModelIndex &index) const override;
    bool setData(const QModelIndex &index, const QVariant &value, int role = Qt::EditRole) override;

signals:
    /// Objects have changed while a search was on: it has been made again, and other rows may be shown.
    void searchedAgain();

protected:
    [[nodiscard]] bool filterAcceptsRow(int sourceRow, const QModelIndex &sourceParent) const override;
    /// Compares the texts of the sort role, and the identifiers of those with equal ones.
    [[nodiscard]] bool lessThan(const QModelIndex &left, const QModelIndex &right) const override;

private:
    /// An object that the type filter lets through. A parent stands before its children.
    struct Entry
    {
        quint32 id;
        int parent; ///< position of its entry; -1 at the top
        int textStart; ///< of its text in the block of all texts
        bool leaf;
    };

    enum Shown : char
    {
        NotShown,
        ShownAsBranch,
        ShownWithLeaves, ///< with what it holds directly and has no children
        ShownWhole ///< with everything below
    };
    [[nodiscard]] bool isSearching() const;
    [[nodiscard]] quint32 objectId(const QModelIndex &source) const;
    [[nodiscard]] Shown shownAs(const QModelIndex &source) const;
    [[nodiscard]] bool isTypeShown(const QModelIndex &source) const;
    void sourceChanged();
    void searchAgain();
    void objectsChanged(const QString &dataName);
    void refilter();
    void search() const;
    void collectEntries() const;
    void addEntries(const QModelIndex &sourceParent, int parentEntry) const;
    [[nodiscard]] std::vector<int> matches() const;
    [[nodiscard]] std::vector<int> entriesWith(const QString &word) const;
    void showBranch(int entry) const;
    [[nodiscard]] bool isHeldByFound(const QModelIndex &source) const;

    QStringList m_types;
    QSet<quint32> m_ids;
    QString m_searchIndex;
    QString m_filter;
    QStringList m_words; ///< of the filter, as they are compared
    bool m_searchEnabled = false;
    bool m_readOnly = false;
    bool m_searchPending = false;
    const orvex::ObjectTreeModel *m_tree = nullptr; ///< the source model

    // What is worked out when it is asked for.
    mutable bool m_entriesCurrent = false;
    mutable bool m_shownCurrent = false;
    mutable std::vector<Entry> m_entries;
    mutable QString m_texts; ///< the entries' texts in order, each ended by a line feed
    mutable QHash<quint32, int> m_entryOfId;
    mutable std::vector<Shown> m_shown; ///< what the search and the identifiers leave, by entry
    mutable bool m_hasFound = false;
};
