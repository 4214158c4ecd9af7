#pragma once

#include "calendardays.h"
#include "command.h"
#include "outcome.h"
#include "schedules.h"

#include <QCoreApplication>
#include <QHash>
#include <QSet>

namespace store {

class Connection;

/// Runs requests (see requests.h): each in one transaction, with the rights that the store grants at that moment.
class RequestExecutor
{
    Q_DECLARE_TR_FUNCTIONS(store::RequestExecutor)

public:
    /// \a connection outlives it.
    explicit RequestExecutor(Connection &connection);

    /// The answer of \a request, with its identifier; see `Database::execute`.
    [[nodiscard]] Command execute(const Command &request);
    /// The roles granted right now.
    [[nodiscard]] Outcome roles(QStringList &roles);

private:
    using Handler = Outcome (RequestExecutor::*)(const QByteArray &payload, QByteArray &reply);
    struct Entry
    {
        Handler handler = nullptr;
        bool writes = false;
    };
    static Entry entryOf(const QString &name);

    Outcome read(const Command &request, Handler handler, QByteArray &reply);
    Outcome write(const Command &request, Handler handler, QByteArray &reply);
    bool findLogged(const Command &request, QByteArray &reply);
    Outcome logRequest(const Command &request, const QByteArray &reply);

    Outcome addSchedule(const QByteArray &payload, QByteArray &reply);
    Outcome updateSchedule(const QByteArray &payload, QByteArray &reply);
    Outcome removeSchedules(const QByteArray &payload, QByteArray &reply);
    Outcome getCalendar(const QByteArray &payload, QByteArray &reply);
    Outcome updateCalendar(const QByteArray &payload, QByteArray &reply);
    Outcome getBlobs(const QByteArray &payload, QByteArray &reply);

    /// Reads a record that is good in itself and that the role allows to store.
    Outcome readSchedule(const QByteArray &payload, const QString &role, orvex::SCHEDULE_DATA &schedule);
    /// What the rest of the store says of a record: its employee, and the other personal schedules.
    Outcome checkReferences(const orvex::SCHEDULE_DATA &schedule);
    Outcome checkGuideShifts(const QList<orvex::SCHEDULE_CALENDAR_DAY> &days);
    Outcome saveDays(quint32 schedule, const QList<orvex::SCHEDULE_CALENDAR_DAY> &days);
    using ProductionModes = QHash<QDate, qint32>;
    ProductionModes productionModes(const QDate &first, const QDate &last);
    /// Puts the production calendar over the worked days.
    static void layHolidays(const ProductionModes &production, QList<orvex::SCHEDULE_CALENDAR_DAY> &days);
    Outcome requireRole(const QString &role);
    Outcome requireCalendarRight(quint32 schedule);
    Outcome changedMeanwhile(quint32 schedule);
    Outcome corrupt() const;
    Outcome noSchedule() const;

    Connection &m_connection;
    /// Schedules added through this connection whose days have not been stored yet: who may create may do that once.
    QSet<quint32> m_createdHere;
    quint32 m_created = 0; ///< by the running request
    quint32 m_daysStored = 0; ///< by the running request, for a schedule of this connection
};

} // namespace store
