#pragma once

#include "datanames.h"
#include "localstorage_export.h"
#include "objects.h"
#include "schedules.h"

#include <QObject>
#include <QThreadPool>

#include <memory>

class QAbstractItemModel;

namespace orvex {

struct StorageChange;

/// The client's cache of what the store holds, and the signals of every change to it. GUI thread only.
///
/// The change feed is its only writer (`apply`); pages read. A removal is signalled while the record is still there, a
/// change when the new record is.
class LOCALSTORAGE_EXPORT LocalStorage : public QObject
{
    Q_OBJECT

public:
    /// The one that the client fills and every page reads; it lives to the end of the program.
    static LocalStorage *instance();

    /// An empty one, for tests and measurements.
    LocalStorage();
    ~LocalStorage() override;

    /// All schedules by identifier: an O(1) copy of a shared hash.
    [[nodiscard]] ScheduleHash schedules() const;

    /// The object, or a null one (empty name, no parameters) when there is none.
    [[nodiscard]] ObjectInfo constObject(quint32 id, const QString &dataName) const;
    /// All objects of a data name; an empty hash as long as there are none. Never null; the pointer stays good for the
    /// life of the storage, its contents change with the feed.
    [[nodiscard]] const ObjectHash *constObjects(const QString &dataName) const;

    /// The objects of a data name as a tree that follows every change to them: see `ObjectTreeModel` for its columns
    /// and roles. Made when first asked for; the storage owns it, and it lives as long as the storage.
    [[nodiscard]] QAbstractItemModel *model(const QString &dataName);

    /// The locally held copy of a blob; empty: none at hand, or not current any more.
    [[nodiscard]] QByteArray blob(quint32 id, const QString &name) const;
    /// Raw MD5 of that copy; empty without one.
    [[nodiscard]] QByteArray blobMd5(quint32 id, const QString &name) const;
    /// Keeps a copy in place of the one held, until the feed tells that the store's blob has changed; emits
    /// `blobStored`. Empty data: the store has none.
    void setBlob(quint32 id, const QString &name, const QByteArray &data);

    /// Takes in what the feed read, and emits the signals below. A full change signals what differs; where much is held
    /// already, another thread looks for that, and it is taken in when `settled` is emitted. Whatever comes meanwhile
    /// waits its turn.
    void apply(const StorageChange &change);
    /// Whether everything that came has been taken in.
    [[nodiscard]] bool isSettled() const { return !m_comparison; }

signals:
    /// What `apply` had put off has been taken in.
    void settled();
    /// These schedules are new or were changed.
    void scheduleChanged(const QList<quint32> &ids);
    /// These schedules, all of them held, go: emitted before their entries leave the cache.
    void scheduleRemoved(const QList<quint32> &ids);
    /// These objects of a data name are new or were changed.
    void objectChanged(const QString &dataName, const QList<quint32> &ids);
    /// These objects of a data name, all of them held, go: emitted before their entries leave the cache.
    void objectRemoved(const QString &dataName, const QList<quint32> &ids);
    /// The local copy of a blob is no longer current and was dropped.
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

    ObjectHash *objects(const QString &dataName) const;
    void applyNow(const StorageChange &change);
    void compareAside(const StorageChange &change);
    void endComparison();
    void replaceAll(Comparison &comparison);
    void applySchedules(const ScheduleHash &changed, const QList<quint32> &removed);
    void applyObjects(const QString &dataName, const ObjectHash &changed, const QList<quint32> &removed);
    void dropAllBlobs();
    void dropBlobs(const QHash<quint32, QStringList> &changed);

    ScheduleHash m_schedules;
    mutable QHash<QString, ObjectHash *> m_objects; ///< owned; by data name, created when first asked for
    QHash<QString, QAbstractItemModel *> m_models; ///< children of this object, by data name
    QHash<quint32, QHash<QString, Blob>> m_blobs;
    QThreadPool m_pool; ///< looks for differences, and frees what was replaced
    std::shared_ptr<Comparison> m_comparison; ///< that runs
    QList<StorageChange> m_waiting; ///< for its end
};

} // namespace orvex
