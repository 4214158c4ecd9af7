#pragma once

#include "database.h"
#include "samplerecords.h"
#include "storefile.h"
#include "storerequest.h"

#include <QPair>
#include <QStringList>
#include <QTemporaryDir>
#include <QVector>

// Experiments that try to make a store lose acknowledged data. Each prints its figures and returns the exit code of the
// program: 0 only if nothing was lost.

namespace stress {

/// `kill --times N`: kills a writing client repeatedly.
int killWriters(const QStringList &arguments);
/// The client process of `kill`: writes until it is killed and prints what the store has acknowledged.
int writeUntilKilled(const QStringList &arguments);
/// `powercut --points N`: resets the disk to what was synced.
int cutPower(const QStringList &arguments);
/// `replies --requests N`: interrupts every request and sends it again.
int interruptRequests(const QStringList &arguments);
/// `writers --processes N --seconds S`: several clients write at the same time.
int runManyWriters(const QStringList &arguments);
/// A client process of `writers`.
int writeAndFollow(const QStringList &arguments);

/// The number that follows the option \a name, or \a otherwise.
[[nodiscard]] int number(const QStringList &arguments, const char *name, int otherwise);
void print(const QString &line);
/// Prints the figures of an experiment in one line.
void printFigures(const char *experiment, const QVector<QPair<const char *, qint64>> &figures);

/// Creates an empty store.
[[nodiscard]] store::StoreAddress newStore(const QTemporaryDir &folder);
/// The number of faults that a check finds; prints them.
[[nodiscard]] int countFaults(const store::StoreAddress &address);
/// A checksum of \a schedules.
[[nodiscard]] QByteArray digest(const orvex::ScheduleHash &schedules);

} // namespace stress
