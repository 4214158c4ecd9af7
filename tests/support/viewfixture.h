#pragma once

#include "scheduleview.h"
#include "tqserverinterface.h"

#include <QAction>
#include <QStringList>
#include <QTableView>

#include <memory>

/// The page "Графики" with all rights. The test acts as the store: it reads the requests from `sent` and answers them.
class ViewFixture
{
public:
    static const QStringList AllRoles;

    ViewFixture();

    [[nodiscard]] QTableView *table() const { return view->findChild<QTableView *>("scheduleView"); }
    [[nodiscard]] QAction *action(const QString &name) const { return view->findChild<QAction *>(name); }

    /// The names in the list, from top to bottom.
    [[nodiscard]] QStringList names() const;
    /// Selects only these rows; the current row stays the same.
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
    QList<Command> sent; ///< the commands passed to the transport
    QStringList popups;
};
