#pragma once

#include "command.h"
#include "database.h"
#include "requests.h"
#include "tqdatastream.h"

#include <QStringList>
#include <QTemporaryDir>

// Experiments that try to make a store lose something. Each prints its figures and gives the program's exit code:
// 0 only where nothing was lost.

namespace stress {

/// `kill --times N`: a writing client is killed again and again.
int killWriters(const QStringList &arguments);
/// The client of it: writes until it is killed and tells what the store has acknowledged.
int writeUntilKilled(const QStringList &arguments);
/// `powercut --points N`: the disk is cut back to what was synced.
int cutPower(const QStringList &arguments);
/// `replies --requests N`: every request is cut off and sent again.
int cutReplies(const QStringList &arguments);
/// `writers --processes N --seconds S`: several clients write at once.
int manyWriters(const QStringList &arguments);
/// A client of it.
int writeAndFollow(const QStringList &arguments);

/// The number behind the key \a name.
[[nodiscard]] int number(const QStringList &arguments, const char *name, int otherwise);
/// Ends the program with the text of a failure that is the experiment's, not the store's.
void require(const store::Outcome &outcome);
void print(const QString &line);

/// A new, empty store.
[[nodiscard]] store::StoreAddress newStore(const QTemporaryDir &folder);
[[nodiscard]] orvex::SCHEDULE_DATA schedule(const QString &name);

template <class... T> [[nodiscard]] Command request(QLatin1String name, const T &...values)
{
    Command command({StoreRequestKind, name});
    command.setId(QUuid::createUuid());
    command.setPayload(writePayload(values...));
    return command;
}

/// The faults that a check of the store finds, printed.
[[nodiscard]] int faults(const store::StoreAddress &address);
[[nodiscard]] orvex::ScheduleHash schedules(const store::StoreAddress &address);
/// What `schedules` holds, in one value.
[[nodiscard]] QByteArray digest(const orvex::ScheduleHash &schedules);

} // namespace stress
