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

/// The requests that a plug-in can make of the store. Every call returns at once; its callback is called exactly once,
/// later, on the GUI thread, with the result code and the payload described at `request`'s names; never after this
/// facade or the plug-in has died.
class TQ5SDK_EXPORT Data : public QObject
{
    Q_OBJECT

public:
    using Callback = std::function<void(Command &)>;

    /// \a plugin must be initialised; its object becomes the facade's parent. \a sessionId goes along with every
    /// request.
    Data(TQPluginInterface *plugin, const QString &sessionId);

    /// Adds a schedule; its identifier and version are ignored. The reply holds the new identifier (qint32).
    void addSchedule(const orvex::SCHEDULE_DATA &schedule, Callback reply);
    /// Replaces a whole record, days, shifts and intervals included. Code 3 when the record's version is stale.
    void updateSchedule(const orvex::SCHEDULE_DATA &schedule, Callback reply);
    /// Removes all of \a ids or none.
    void removeSchedules(const QList<unsigned int> &ids, Callback reply);
    /// Reads the calendar days of \a ids from \a first to \a last, both included.
    void getScheduleCalendar(const QList<int> &ids, const QDate &first, const QDate &last, Callback reply);
    /// Stores \a days, each by its own date. The period is that of the editor; days outside it are stored too.
    void updateScheduleCalendar(int id, const QDate &first, const QDate &last,
                                const QList<orvex::SCHEDULE_CALENDAR_DAY> &days, Callback reply);
    /// Reads the blobs whose MD5 differs from the asker's.
    void getBlobDataChange(const QList<orvex::_BLOB_DATA_RESQUEST> &requests, Callback reply);

private:
    void send(const QString &name, const QByteArray &payload, Callback reply);

    QPointer<TQServerInterface> m_server;
    QString m_sessionId;
};

} // namespace tq5sdk
