#pragma once

#include "calendardays.h"
#include "command.h"
#include "outcome.h"
#include "schedules.h"

#include <QCoreApplication>
#include <QHash>
#include <QUuid>

namespace store {

class Connection;

/// Schedules added by this client whose days have not been stored yet, each with the request that added it. The right
/// to create includes storing these days once.
using CreatedSchedules = QHash<quint32, QUuid>;

/// Runs requests (see requests.h), each in one transaction and with the rights granted at that moment.
class RequestExecutor
{
    Q_DECLARE_TR_FUNCTIONS(store::RequestExecutor)

public:
    /// Both must outlive the executor; \a createdHere is kept when the connection is lost.
    RequestExecutor(Connection &connection, CreatedSchedules &createdHere);

    /// See `Database::execute`.
    [[nodiscard]] Command execute(const Command &request);
    /// The roles granted now.
    [[nodiscard]] Outcome roles(QStringList &roles);

private:
    using Handler = Outcome (RequestExecutor::*)(const QByteArray &payload, QByteArray &reply);
    struct Entry
    {
        Handler handler = nullptr;
        bool writes = false;
    };
    using ProductionModes = QHash<QDate, qint32>;
    [[nodiscard]] static Entry entryOf(const QString &name);

    Outcome read(const Command &request, Handler handler, QByteArray &reply);
    Outcome write(const Command &request, Handler handler, QByteArray &reply);
    void rememberCreation(const Command &request, const QByteArray &reply);
    [[nodiscard]] bool findLogged(const QUuid &request, QByteArray &reply);
    Outcome logRequest(const Command &request, const QByteArray &reply);

    Outcome addSchedule(const QByteArray &payload, QByteArray &reply);
    Outcome updateSchedule(const QByteArray &payload, QByteArray &reply);
    Outcome removeSchedules(const QByteArray &payload, QByteArray &reply);
    Outcome getCalendar(const QByteArray &payload, QByteArray &reply);
    Outcome updateCalendar(const QByteArray &payload, QByteArray &reply);
    Outcome getBlobs(const QByteArray &payload, QByteArray &reply);

    /// Reads a record, and checks it and the right to store it.
    Outcome readSchedule(const QByteArray &payload, const QString &role, orvex::SCHEDULE_DATA &schedule);
    /// Checks that all schedules exist.
    Outcome checkExist(const QList<quint32> &ids);
    /// Checks that the employee exists and has no other personal schedule for the month.
    Outcome checkReferences(const orvex::SCHEDULE_DATA &schedule);
    Outcome checkGuideShifts(const QList<orvex::SCHEDULE_CALENDAR_DAY> &days);
    Outcome saveDays(quint32 schedule, const QList<orvex::SCHEDULE_CALENDAR_DAY> &days);
    [[nodiscard]] ProductionModes productionModes(const QDate &first, const QDate &last);
    /// Applies the production calendar to the worked days.
    static void applyHolidays(const ProductionModes &production, QList<orvex::SCHEDULE_CALENDAR_DAY> &days);
    Outcome requireRole(const QString &role);
    Outcome requireCalendarRight(quint32 schedule);
    Outcome changedMeanwhile(quint32 schedule);
    static Outcome corrupt();
    static Outcome noSchedule();

    Connection &m_connection;
    CreatedSchedules &m_createdHere;
};

} // namespace store
