#pragma once

#include "calendardays.h"
#include "command.h"
#include "objects.h"
#include "schedules.h"
#include "tq5sdk_export.h"

#include <QDate>
#include <QObject>
#include <QPointer>

#include <functional>

class TQPluginInterface;
class TQServerInterface;

namespace tq5sdk {

/// The requests of a plug-in to the store. Each call returns at once. Its callback is called exactly once,
/// asynchronously, on the GUI thread, with the result code and the payload described in requests.h; it is not called
/// after the destruction of this object or of the plug-in's.
class TQ5SDK_EXPORT Data : public QObject
{
    Q_OBJECT

public:
    using Callback = std::function<void(Command &)>;

    /// \a plugin must be initialised; its object becomes the parent. \a sessionId is sent with each request.
    Data(TQPluginInterface *plugin, const QString &sessionId);

    /// Adds a schedule; identifier and version are ignored. The reply holds the new identifier (qint32).
    void addSchedule(const orvex::SCHEDULE_DATA &schedule, Callback reply);
    /// Replaces a whole record with its days, shifts and intervals. Code 3 if the record's version is not the current
    /// one.
    void updateSchedule(const orvex::SCHEDULE_DATA &schedule, Callback reply);
    /// Removes all of \a ids or none.
    void removeSchedules(const QList<unsigned int> &ids, Callback reply);
    /// Reads the calendar days of \a ids from \a first to \a last, both included.
    void getScheduleCalendar(const QList<int> &ids, const QDate &first, const QDate &last, Callback reply);
    /// Stores \a days, each by its own date. Days outside the period are stored too.
    void updateScheduleCalendar(int id, const QDate &first, const QDate &last,
                                const QList<orvex::SCHEDULE_CALENDAR_DAY> &days, Callback reply);
    /// Reads the blobs whose MD5 differs from the request's.
    void getBlobDataChange(const QList<orvex::_BLOB_DATA_RESQUEST> &requests, Callback reply);

private:
    void send(const QString &name, const QByteArray &payload, Callback reply);

    QPointer<TQServerInterface> m_server;
    QString m_sessionId;
};

} // namespace tq5sdk
