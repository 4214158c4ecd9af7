#pragma once

#include "authdata.h"
#include "scheduleview.h"
#include "tqdatastream.h"
#include "tqserverinterface.h"

#include <QApplication>
#include <QDialog>
#include <QDialogButtonBox>
#include <QObject>
#include <QPointer>
#include <QPushButton>
#include <QStringList>
#include <QTableView>
#include <QTimer>

#include <functional>
#include <memory>
#include <utility>

/// An operator who works in the modal dialog that opens next, and leaves it by a button.
class Operator : public QObject
{
public:
    using Work = std::function<void(QDialog &)>;

    explicit Operator(QDialogButtonBox::StandardButton button, Work work = {})
        : m_button(button)
        , m_work(std::move(work))
    {
        connect(&m_timer, &QTimer::timeout, this, &Operator::look);
        m_timer.start(0);
    }

    /// Whether a dialog has come up.
    [[nodiscard]] bool isDone() const { return m_isDone; }

private:
    void look()
    {
        const QPointer<QDialog> dialog = qobject_cast<QDialog *>(QApplication::activeModalWidget());
        if (!dialog)
            return;
        m_timer.stop();
        m_isDone = true;
        if (m_work)
            m_work(*dialog);
        if (dialog)
            dialog->findChild<QDialogButtonBox *>()->button(m_button)->click();
    }

    QDialogButtonBox::StandardButton m_button;
    Work m_work;
    QTimer m_timer;
    bool m_isDone = false;
};

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

    [[nodiscard]] QTableView *table() const { return view->findChild<QTableView *>(QStringLiteral("scheduleView")); }

    [[nodiscard]] QList<Command> requests(const QString &name) const
    {
        QList<Command> found;
        for (const Command &command : sent) {
            if (command.name() == name)
                found.append(command);
        }
        return found;
    }

    [[nodiscard]] static orvex::SCHEDULE_DATA recordOf(const Command &request)
    {
        orvex::SCHEDULE_DATA record;
        if (!readPayload(request.payload(), record))
            qFatal("no record in this request");
        return record;
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
