#pragma once

#include "authdata.h"
#include "scheduleview.h"
#include "tqserverinterface.h"

#include <QObject>
#include <QStringList>

#include <memory>

/// The page "Графики" on a switchboard whose store is the test: what is asked lies in `sent`, the test answers.
class ViewFixture
{
public:
    ViewFixture()
    {
        AuthData::setRoles({QStringLiteral("RL_SCHEDULE_SHOW"), QStringLiteral("RL_SCHEDULE_CREATE"),
                            QStringLiteral("RL_SCHEDULE_UPDATE"), QStringLiteral("RL_SCHEDULE_DELETE")});
        server.setTransport([this](const Command &command) { sent.append(command); });
        server.setConnected(true);
        view = std::make_unique<ScheduleView>();
        QObject::connect(view.get(), &PluginWidget::popupCriticalMessageRequested, view.get(),
                         [this](const QString &text) { popups.append(text); });
        view->init(&server, QStringLiteral("scheduleview"));
        view->insertedToInterface();
        view->resize(900, 500);
        view->show();
    }

    [[nodiscard]] QList<Command> requests(const QString &name) const
    {
        QList<Command> found;
        for (const Command &command : sent) {
            if (command.name() == name)
                found.append(command);
        }
        return found;
    }

    void reply(Command request, int result, const QByteArray &payload = {})
    {
        request.setResult(result);
        request.setPayload(payload);
        server.deliver(request);
    }

    TQServerInterface server;
    std::unique_ptr<ScheduleView> view;
    QList<Command> sent; ///< what reached the transport
    QStringList popups;
};
