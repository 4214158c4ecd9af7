#pragma once

#include "outcome.h"
#include "storagechange.h"

#include <QCoreApplication>
#include <QSet>

namespace store {

class Connection;

/// Reads the contents of the store, and then the changes from the change log.
class ChangeFeed
{
    Q_DECLARE_TR_FUNCTIONS(store::ChangeFeed)

public:
    /// \a connection must outlive the feed.
    explicit ChangeFeed(Connection &connection);

    /// Everything that the client caches, in one state of the store. `next` continues from this state.
    [[nodiscard]] Outcome snapshot(orvex::StorageChange &change);
    /// The changes since the last call: each identifier once, with its current contents, or as removed. A full change
    /// if the log no longer covers that time, or if the store has been replaced by another one. Fails if the schema has
    /// been upgraded meanwhile, because the connection's statements are for the old schema.
    [[nodiscard]] Outcome next(orvex::StorageChange &change);
    /// Shortens long logs. Another feed that has not read the removed entries gets a full change.
    [[nodiscard]] Outcome cutLogs();

private:
    /// How far the feed has read which store.
    struct Position
    {
        QString feedId;
        qint64 seq = 0;
        qint64 cut = 0;
        int schema = 0;
    };
    using Ids = QSet<quint32>;

    [[nodiscard]] bool readPosition(Position &position);
    [[nodiscard]] Outcome readAll(orvex::StorageChange &change);
    [[nodiscard]] Outcome readEntries(orvex::StorageChange &change);
    void readSchedules(const Ids *ids, orvex::StorageChange &change);
    void readSubjects(const Ids *ids, orvex::StorageChange &change);
    void readUnits(const Ids *ids, orvex::StorageChange &change);
    void readShifts(const Ids *ids, orvex::StorageChange &change);
    void readIntervals(const Ids *ids, orvex::StorageChange &change);

    Connection &m_connection;
    Position m_position;
};

} // namespace store
