#pragma once

#include "objects.h"
#include "schedules.h"

#include <QMetaType>

namespace orvex {

/// What the change feed hands to the local storage: either everything (`full`) or only what changed.
struct StorageChange
{
    bool full = false; ///< the hashes hold all there is; what they lack is gone
    ScheduleHash schedules; ///< by identifier; new and changed ones
    /// Of a full change: the keys of `schedules`, gathered by who read them, off the GUI thread; may be left empty.
    QList<quint32> scheduleIds;
    QList<quint32> removedSchedules;
    QHash<QString, ObjectHash> objects; ///< by data name, then by identifier; new and changed ones
    QHash<QString, QList<quint32>> removedObjects; ///< by data name
    QHash<quint32, QStringList> changedBlobs; ///< names of blobs, by object, whose cached copy is no longer current

    /// Whether there is nothing to take in. A full change never is: it may say that all is gone.
    [[nodiscard]] bool isEmpty() const
    {
        return !full && schedules.isEmpty() && removedSchedules.isEmpty() && objects.isEmpty()
            && removedObjects.isEmpty() && changedBlobs.isEmpty();
    }
};

} // namespace orvex

Q_DECLARE_METATYPE(orvex::StorageChange)
