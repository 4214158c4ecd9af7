#pragma once

#include "outcome.h"
#include "storagechange.h"

#include <QCoreApplication>
#include <QSet>

namespace store {

class Connection;

/// Follows the log of changes: the whole first, then whatever changed since.
class ChangeFeed
{
    Q_DECLARE_TR_FUNCTIONS(store::ChangeFeed)

public:
    /// \a connection outlives the feed.
    explicit ChangeFeed(Connection &connection);

    /// Everything that the client caches, in one state of the store. The feed goes on from there.
    [[nodiscard]] Outcome snapshot(orvex::StorageChange &change);
    /// What changed since the last call: each identifier once, with its present contents, or as removed. The whole
    /// where the log does not reach back, or where another store has taken the place of this one. Fails once the
    /// schema has been raised under it: the connection's statements are those of the old one.
    [[nodiscard]] Outcome next(orvex::StorageChange &change);
    /// Shortens logs that have grown long. Other feeds that fall behind the cut read the whole.
    [[nodiscard]] Outcome cutLogs();

private:
    /// How far the feed has read, and of which store.
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
