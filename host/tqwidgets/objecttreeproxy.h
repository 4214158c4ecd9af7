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

/// Filters an object tree (`orvex::LocalStorage::model`) by type, identifier and search text, and sorts it by the sort
/// role.
///
/// A search finds an object if each word of the text occurs in its name or in its personnel number, ignoring case. A
/// found object is shown with its ancestors. A found unit is shown with everything below it; if other units below it
/// are found, only with its own employees; if employees below it are found, with nothing more.
class TQWIDGETS_EXPORT ObjectTreeProxy : public QSortFilterProxyModel
{
    Q_OBJECT

public:
    explicit ObjectTreeProxy(QObject *parent = nullptr);

    /// Shows only objects of these types, and nothing below any other object. Empty: all types.
    void setTypeFilter(const QStringList &types);
    [[nodiscard]] QStringList typeFilter() const { return m_types; }
    /// Shows only these objects and their ancestors. Empty: all objects.
    void setIdFilter(const QSet<quint32> &ids);
    [[nodiscard]] QSet<quint32> idFilter() const { return m_ids; }
    /// Sets the data name of the objects whose names and numbers are searched. Empty: no search.
    void setSearchIndex(const QString &dataName);
    [[nodiscard]] QString searchIndex() const { return m_searchIndex; }
    /// Off at first: then the text is ignored and the whole tree is shown.
    void setSearchEnabled(bool enabled);
    [[nodiscard]] bool isSearchEnabled() const { return m_searchEnabled; }
    /// Disables editing and dragging. Off at first.
    void setReadOnly(bool readOnly);
    [[nodiscard]] bool isReadOnly() const { return m_readOnly; }

    /// Sets the search text; blank: the whole tree. A row that the new text hides leaves the selection of a view
    /// without `selectionChanged`, so the caller must check the selection afterwards.
    void setFilter(const QString &text);
    [[nodiscard]] QString filter() const { return m_filter; }
    /// Whether a search is active and has a result.
    [[nodiscard]] bool hasFilterResult() const;

    /// \a model: from `orvex::LocalStorage::model`.
    void setSourceModel(QAbstractItemModel *model) override;
    [[nodiscard]] Qt::ItemFlags flags(const QModelIndex &index) const override;
    bool setData(const QModelIndex &index, const QVariant &value, int role = Qt::EditRole) override;

signals:
    /// The search has been repeated after a change of the objects; other rows may be shown.
    void searchedAgain();

protected:
    [[nodiscard]] bool filterAcceptsRow(int sourceRow, const QModelIndex &sourceParent) const override;
    /// Compares by the sort role; equal values by identifier.
    [[nodiscard]] bool lessThan(const QModelIndex &left, const QModelIndex &right) const override;

private:
    /// An object that passes the type filter. A parent is before its children.
    struct Entry
    {
        quint32 id = 0;
        int parent = -1; ///< position of the parent's entry; -1 at the top
        int textStart = 0; ///< position of its text in `m_texts`
        bool leaf = false;
    };

    enum Shown : char
    {
        NotShown,
        ShownAlone, ///< found, or above a found object
        ShownWithLeaves, ///< with its children that have no children
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
    void showWithAncestors(int entry) const;
    [[nodiscard]] bool isInsideFoundUnit(const QModelIndex &source) const;

    QStringList m_types;
    QSet<quint32> m_ids;
    QString m_searchIndex;
    QString m_filter;
    QStringList m_words; ///< of the filter, folded
    bool m_searchEnabled = false;
    bool m_readOnly = false;
    bool m_searchPending = false;
    const orvex::ObjectTreeModel *m_tree = nullptr; ///< the source model

    // Calculated on demand.
    mutable bool m_entriesValid = false;
    mutable bool m_shownValid = false;
    mutable std::vector<Entry> m_entries;
    mutable QString m_texts; ///< the texts of the entries, each with a line feed at its end
    mutable QHash<quint32, int> m_entryOfId;
    mutable std::vector<Shown> m_shown; ///< result of search and identifiers, by entry
    mutable bool m_hasFound = false;
};
