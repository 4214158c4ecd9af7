#pragma once

#include "scheduleview.h"
#include "tqserverinterface.h"

#include <QAction>
#include <QStringList>
#include <QTableView>

#include <memory>

/// The page "Графики" with every right, and the test in the place of the store: it finds the requests in `sent` and
/// answers them.
class ViewFixture
{
public:
    static const QStringList AllRoles;

    ViewFixture();

    [[nodiscard]] QTableView *table() const { return view->findChild<QTableView *>("scheduleView"); }
    [[nodiscard]] QAction *action(const QString &name) const { return view->findChild<QAction *>(name); }

    /// The names in the list, from the top down.
    [[nodiscard]] QStringList names() const;
    /// Selects these rows alone; the current one stays.
    void select(const QStringList &names) const;
    void setCurrent(const QString &name) const;

    [[nodiscard]] QList<Command> requests(const QString &name) const;
    [[nodiscard]] static orvex::SCHEDULE_DATA recordOf(const Command &request);
    /// The request for a year's days and its reply.
    [[nodiscard]] static QByteArray daysRequest(int id, int year);
    [[nodiscard]] static QByteArray daysReply(int id, int year, const QList<orvex::SCHEDULE_CALENDAR_DAY> &days);
    void reply(Command request, int result, const QByteArray &payload = {});

    TQServerInterface server;
    std::unique_ptr<ScheduleView> view;
    QList<Command> sent; ///< what reached the transport
    QStringList popups;
};
