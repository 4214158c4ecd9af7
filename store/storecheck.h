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

/// A fault in the contents of a store.
struct Fault
{
    QString text; ///< what is wrong with which record, in whole sentences
    QString remedy; ///< what the operator can do
};

/// Looks for faults: damage found by the engine, references to missing records, and records that break the rules for
/// requests.
class StoreCheck
{
    Q_DECLARE_TR_FUNCTIONS(store::StoreCheck)

public:
    /// \a connection must be open and outlive the check.
    explicit StoreCheck(Connection &connection);

    /// Checks everything, each kind of fault in a separate read transaction, so that a damaged part does not hide
    /// other faults. Succeeds if the store can be read at all.
    [[nodiscard]] Outcome checkAll(QList<Fault> &faults);
    /// Checks only the records, within the caller's transaction. Stops at the first failure of the engine.
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
