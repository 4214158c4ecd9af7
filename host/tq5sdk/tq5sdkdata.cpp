#include "tq5sdkdata.h"

#include "requests.h"
#include "tqdatastream.h"
#include "tqplugininterface.h"
#include "tqserverinterface.h"

namespace tq5sdk {

Data::Data(TQPluginInterface *plugin, const QString &sessionId)
    : QObject(plugin->object())
    , m_server(plugin->server())
    , m_sessionId(sessionId)
{
}

void Data::addSchedule(const orvex::SCHEDULE_DATA &schedule, Callback reply)
{
    send(request::AddSchedule, writePayload(schedule), std::move(reply));
}

void Data::updateSchedule(const orvex::SCHEDULE_DATA &schedule, Callback reply)
{
    send(request::UpdateSchedule, writePayload(schedule), std::move(reply));
}

void Data::removeSchedules(const QList<unsigned int> &ids, Callback reply)
{
    send(request::RemoveSchedules, writePayload(ids), std::move(reply));
}

void Data::getScheduleCalendar(const QList<int> &ids, const QDate &first, const QDate &last, Callback reply)
{
    send(request::GetScheduleCalendar, writePayload(ids, first, last), std::move(reply));
}

void Data::updateScheduleCalendar(int id, const QDate &first, const QDate &last,
                                  const QList<orvex::SCHEDULE_CALENDAR_DAY> &days, Callback reply)
{
    send(request::UpdateScheduleCalendar, writePayload(qint32(id), first, last, days), std::move(reply));
}

void Data::getBlobDataChange(const QList<orvex::_BLOB_DATA_RESQUEST> &requests, Callback reply)
{
    send(request::GetBlobDataChange, writePayload(requests), std::move(reply));
}

void Data::send(const QString &name, const QByteArray &payload, Callback reply)
{
    Command command({StoreRequestKind, name});
    command.setSessionId(m_sessionId);
    command.setPayload(payload);
    if (m_server)
        m_server->sendQuery(command, this, std::move(reply));
    else
        TQServerInterface::refuseQuery(command, this, reply);
}

} // namespace tq5sdk
