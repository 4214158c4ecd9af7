#pragma once

#include "datanames.h"
#include "localstorage_export.h"
#include "objects.h"
#include "schedules.h"

#include <QObject>
#include <QThreadPool>

#include <map>
#include <memory>

class QAbstractItemModel;

namespace orvex {

struct StorageChange;

/// The client's cache of the store's contents. GUI thread only.
///
/// Only the change feed writes it (`apply`). A removal is signalled before the record is removed, a change after the
/// new record is in place.
class LOCALSTORAGE_EXPORT LocalStorage : public QObject
{
    Q_OBJECT

public:
    /// The client's storage; it exists until the program ends.
    static LocalStorage *instance();

    /// An empty storage, for tests and benchmarks.
    LocalStorage();
    ~LocalStorage() override;

    /// All schedules by identifier: an O(1) copy of a shared hash.
    [[nodiscard]] ScheduleHash schedules() const;

    /// The object; a null one (empty name, no parameters) if there is none.
    [[nodiscard]] ObjectInfo constObject(quint32 id, const QString &dataName) const;
    /// All objects of a data name; never null. The pointer is valid until the storage is destroyed; the contents change
    /// with `apply`.
    [[nodiscard]] const ObjectHash *constObjects(const QString &dataName) const;

    /// The objects of a data name as a tree that follows every change; see `ObjectTreeModel` for columns and roles.
    /// Created with the first call, owned by the storage.
    [[nodiscard]] QAbstractItemModel *model(const QString &dataName);

    /// The local copy of a blob; empty: none, or no longer current.
    [[nodiscard]] QByteArray blob(quint32 id, const QString &name) const;
    /// Raw MD5 of that copy; empty if there is none.
    [[nodiscard]] QByteArray blobMd5(quint32 id, const QString &name) const;
    /// Replaces the local copy, which is valid until the feed reports a change of the blob; emits `blobStored`. Empty
    /// data: the store has no such blob.
    void setBlob(quint32 id, const QString &name, const QByteArray &data);

    /// Applies a change of the feed and emits the signals below. A full change signals the differences only. In a large
    /// storage another thread finds them: then the full change and those after it are applied before `settled`.
    void apply(const StorageChange &change);
    /// Whether every change has been applied.
    [[nodiscard]] bool isSettled() const { return !m_comparison; }

signals:
    /// The changes that `apply` deferred have been applied.
    void settled();
    /// These schedules are new or changed.
    void scheduleChanged(const QList<quint32> &ids);
    /// These schedules are about to be removed; the storage still holds all of them.
    void scheduleRemoved(const QList<quint32> &ids);
    /// These objects of a data name are new or changed.
    void objectChanged(const QString &dataName, const QList<quint32> &ids);
    /// These objects of a data name are about to be removed; the storage still holds all of them.
    void objectRemoved(const QString &dataName, const QList<quint32> &ids);
    /// The local copy of a blob was not current any more and has been removed.
    void blobChanged(quint32 id, const QString &name);
    /// The local copy of a blob has been set.
    void blobStored(quint32 id, const QString &name);

private:
    struct Comparison;
    struct Blob
    {
        QByteArray data;
        QByteArray md5;
    };

    ObjectHash &objects(const QString &dataName) const;
    void applyNow(const StorageChange &change);
    void startComparison(const StorageChange &change);
    void finishComparison();
    void replaceAll(Comparison &comparison);
    void applySchedules(const ScheduleHash &changed, const QList<quint32> &removed);
    void applyObjects(const QString &dataName, const ObjectHash &changed, const QList<quint32> &removed);
    void removeAllBlobs();
    void removeBlobs(const QHash<quint32, QStringList> &changed);

    ScheduleHash m_schedules;
    mutable std::map<QString, ObjectHash> m_objects; ///< by data name; the addresses of the values are stable
    QHash<QString, QAbstractItemModel *> m_models; ///< children of this object, by data name
    QHash<quint32, QHash<QString, Blob>> m_blobs;
    QThreadPool m_pool; ///< compares, and frees replaced contents
    std::shared_ptr<Comparison> m_comparison; ///< the running one
    QList<StorageChange> m_deferred; ///< until the comparison has finished
};

} // namespace orvex
