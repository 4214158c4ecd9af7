#pragma once

#include "outcome.h"

#include <QCoreApplication>
#include <QList>

#include <functional>

namespace orvex {
struct SCHEDULE_DATA;
}

namespace store {

class Connection;
class Query;

/// Something that is wrong with what a store holds.
struct Fault
{
    QString text; ///< whole sentences that name the record
    QString remedy; ///< what to do about it
};

/// Looks for what a store must not hold: damage of the file, references to nothing, records that break the rules by
/// which requests are checked.
class StoreCheck
{
    Q_DECLARE_TR_FUNCTIONS(store::StoreCheck)

public:
    /// \a connection is open and outlives the check.
    explicit StoreCheck(Connection &connection);

    /// Everything, each kind of fault in a reading transaction of its own, so that one damaged page does not hide the
    /// rest. A store that can be read at all gives success, whatever its faults.
    [[nodiscard]] Outcome checkAll(QList<Fault> &faults);
    /// The records alone, inside the caller's transaction, up to the first failure of the engine.
    [[nodiscard]] Outcome checkRecords(QList<Fault> &faults);

private:
    using Step = void (StoreCheck::*)(QList<Fault> &faults);
    static const QList<Step> &steps();

    void checkReferences(QList<Fault> &faults);
    void checkSchedules(QList<Fault> &faults);
    void checkCalendarDays(QList<Fault> &faults);
    void checkBlobs(QList<Fault> &faults);
    void checkProductionDays(QList<Fault> &faults);
    [[nodiscard]] static QString scheduleFault(const Query &row, const orvex::SCHEDULE_DATA &schedule);

    Connection &m_connection;
};

} // namespace store
