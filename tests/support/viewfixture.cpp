#include "viewfixture.h"

#include "authdata.h"
#include "hands.h"
#include "schedulemodel.h"
#include "tqdatastream.h"

#include <QtTest>

const QStringList ViewFixture::AllRoles{"RL_SCHEDULE_SHOW", "RL_SCHEDULE_CREATE", "RL_SCHEDULE_UPDATE",
                                        "RL_SCHEDULE_DELETE"};

ViewFixture::ViewFixture()
{
    AuthData::setRoles(AllRoles);
    server.setTransport([this](const Command &command) { sent.append(command); });
    server.setConnected(true);
    view = std::make_unique<ScheduleView>();
    QObject::connect(view.get(), &PluginWidget::popupCriticalMessageRequested, view.get(),
                     [this](const QString &text) { popups.append(text); });
    view->init(&server, "scheduleview");
    view->insertedToInterface();
    view->resize(900, 500);
    view->show();
}

QStringList ViewFixture::names() const
{
    return support::columnTexts(*table()->model(), ScheduleModel::NameColumn);
}

void ViewFixture::select(const QStringList &names) const
{
    table()->clearSelection();
    const auto shown = this->names();
    for (const QString &name : names) {
        QVERIFY2(shown.contains(name), qPrintable(name));
        const auto index = table()->model()->index(shown.indexOf(name), 0);
        table()->selectionModel()->select(index, QItemSelectionModel::Select | QItemSelectionModel::Rows);
    }
}

void ViewFixture::setCurrent(const QString &name) const
{
    const auto row = names().indexOf(name);
    QVERIFY2(row >= 0, qPrintable(name));
    table()->selectRow(row);
}

QList<Command> ViewFixture::requests(const QString &name) const
{
    QList<Command> found;
    for (const Command &command : sent) {
        if (command.name() == name)
            found.append(command);
    }
    return found;
}

orvex::SCHEDULE_DATA ViewFixture::recordOf(const Command &request)
{
    orvex::SCHEDULE_DATA record;
    if (!readPayload(request.payload(), record))
        qFatal("The request has no record");
    return record;
}

QByteArray ViewFixture::daysRequest(int id, int year)
{
    return writePayload(QList<int>{id}, QDate(year, 1, 1), QDate(year, 12, 31));
}

QByteArray ViewFixture::daysReply(int id, int year, const QList<orvex::SCHEDULE_CALENDAR_DAY> &days)
{
    const QHash<int, QList<orvex::SCHEDULE_CALENDAR_DAY>> byId{{id, days}};
    return daysRequest(id, year) + writePayload(byId);
}

void ViewFixture::reply(Command request, int result, const QByteArray &payload)
{
    request.setResult(result);
    request.setPayload(payload);
    server.deliver(request);
}
