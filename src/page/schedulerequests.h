#pragma once

#include "calendardays.h"
#include "command.h"
#include "schedules.h"

#include <QList>
#include <QObject>

#include <functional>

class TQPluginInterface;

namespace tq5sdk {
class Data;
}

namespace scheduleview {

/// Sends the requests of the page and reads their replies. A failed reply is logged with its code.
class ScheduleRequests final : public QObject
{
    Q_OBJECT

public:
    using Days = QList<orvex::SCHEDULE_CALENDAR_DAY>;
    using Handler = std::function<void(Command &)>;

    /// \a sdk and \a plugin must outlive \a parent.
    ScheduleRequests(tq5sdk::Data *sdk, TQPluginInterface *plugin, QObject *parent);

    void addSchedule(const orvex::SCHEDULE_DATA &record, const Handler &reply);
    /// Stores the record, then \a days if its type has calendar days.
    void updateSchedule(const orvex::SCHEDULE_DATA &record, const Days &days);
    void removeSchedules(const QList<unsigned int> &ids);
    /// Stores \a days as the calendar of the schedule \a id. False for a \a record whose type has no calendar days:
    /// nothing is sent.
    bool storeCalendarDays(qint32 id, const orvex::SCHEDULE_DATA &record, const Days &days, const Handler &reply);
    /// Reads the days of a whole year; the result is `calendarDaysRead`.
    void readCalendarDays(qint32 id, int year);
    /// Reads an employee's photo into the local storage if it differs from the local copy.
    void readPhoto(quint32 employeeId);
    /// Opens a guide on its page.
    void showGuide(const QString &dataName);

    /// Whether the reply is a failure: logs \a key with the code, and emits `failed` unless \a message is empty.
    bool reportFailure(const Command &reply, const char *key, const QString &message);

signals:
    /// \a message is for the operator.
    void failed(const QString &message);
    /// \a first is the first date of the period in the reply; null if it has none.
    void calendarDaysRead(int scheduleId, const QDate &first, const QList<orvex::SCHEDULE_CALENDAR_DAY> &days);
    /// The reply contained at least one blob.
    void photosRead();

private:
    void scheduleUpdateResult(const Command &command, const orvex::SCHEDULE_DATA &record, const Days &days);
    void calendarDaysUpdateResult(const Command &command);
    void scheduleRemoveResult(const Command &command);
    void calendarDaysReadResult(const Command &command);
    void blobDataRead(const Command &command);
    void showGuidesResult(const Command &command);

    tq5sdk::Data *const m_sdk;
    TQPluginInterface *const m_plugin;
};

} // namespace scheduleview
