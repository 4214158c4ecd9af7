#pragma once

#include "objects.h"
#include "schedules.h"

#include <QMetaType>

namespace orvex {

/// A change for the local storage: either the whole contents (`full`) or only what changed.
struct StorageChange
{
    bool full = false; ///< the hashes hold the whole contents; anything else was removed
    ScheduleHash schedules; ///< by identifier; new and changed ones
    /// Of a full change: the keys of `schedules`, collected off the GUI thread; may be empty.
    QList<quint32> scheduleIds;
    QList<quint32> removedSchedules;
    QHash<QString, ObjectHash> objects; ///< by data name, then by identifier; new and changed ones
    QHash<QString, QList<quint32>> removedObjects; ///< by data name
    QHash<quint32, QStringList> changedBlobs; ///< names of blobs, by object, whose cached copy is no longer current

    /// Whether there is nothing to apply. A full change is never empty: it may remove everything.
    [[nodiscard]] bool isEmpty() const
    {
        return !full && schedules.isEmpty() && removedSchedules.isEmpty() && objects.isEmpty()
            && removedObjects.isEmpty() && changedBlobs.isEmpty();
    }
};

} // namespace orvex

Q_DECLARE_METATYPE(orvex::StorageChange)
