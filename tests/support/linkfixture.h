#pragma once

#include "storefixture.h"
#include "storelink.h"

#include <QSignalSpy>

/// An open and connected link, and a spy on each of its signals.
struct LinkFixture
{
    explicit LinkFixture(const StoreFixture &fixture, const store::LinkTiming &schedule = {});

    /// Waits for the answer; returns a command without a name when there is none.
    Command send(const Command &command);
    Command add(const QString &name);
    [[nodiscard]] bool isConnected() const { return connected.last().at(0).toBool(); }

    store::StoreLink link;
    QSignalSpy opened{&link, &store::StoreLink::opened};
    QSignalSpy connected{&link, &store::StoreLink::connectedChanged};
    QSignalSpy lost{&link, &store::StoreLink::connectionLost};
    QSignalSpy replied{&link, &store::StoreLink::replied};
    QSignalSpy changed{&link, &store::StoreLink::changed};
    QSignalSpy roles{&link, &store::StoreLink::rolesChanged};
};
