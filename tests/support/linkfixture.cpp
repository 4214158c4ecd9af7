#include "linkfixture.h"

LinkFixture::LinkFixture(const StoreFixture &fixture, const store::LinkTiming &schedule)
    : link(nullptr, schedule)
{
    link.open(fixture.address());
    if (!connected.wait(20000) || opened.size() != 1)
        qFatal("The store cannot be opened");
}

Command LinkFixture::send(const Command &command)
{
    const int before = replied.size();
    link.submit(command);
    for (int i = 0; i < 200 && replied.size() == before; ++i)
        replied.wait(50);
    return replied.size() > before ? replied.last().at(0).value<Command>() : Command();
}

Command LinkFixture::add(const QString &name)
{
    return send(support::storeRequest(request::AddSchedule, support::newSchedule(name)));
}
