#pragma once

#include "storefixture.h"
#include "storelink.h"

#include <QSignalSpy>

/// A link that is open and connected, with spies on its signals.
struct LinkFixture
{
    explicit LinkFixture(const StoreFixture &fixture, const store::LinkSchedule &schedule = {})
        : link(nullptr, schedule)
    {
        link.open(fixture.address());
        if (!connected.wait(20000) || opened.size() != 1)
            qFatal("The store cannot be opened");
    }

    /// Sends a request and waits for the reply; a command without a name if there is none.
    Command send(const Command &command)
    {
        const int before = replied.size();
        link.submit(command);
        for (int i = 0; i < 200 && replied.size() == before; ++i)
            replied.wait(50);
        return replied.size() > before ? replied.last().at(0).value<Command>() : Command();
    }
    Command add(const QString &name)
    {
        return send(StoreFixture::request(request::AddSchedule, StoreFixture::schedule(name)));
    }
    [[nodiscard]] bool isConnected() const { return connected.last().at(0).toBool(); }

    store::StoreLink link;
    QSignalSpy opened{&link, &store::StoreLink::opened};
    QSignalSpy connected{&link, &store::StoreLink::connectedChanged};
    QSignalSpy lost{&link, &store::StoreLink::connectionLost};
    QSignalSpy replied{&link, &store::StoreLink::replied};
    QSignalSpy changed{&link, &store::StoreLink::changed};
    QSignalSpy roles{&link, &store::StoreLink::rolesChanged};
};
