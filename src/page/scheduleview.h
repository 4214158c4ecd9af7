#pragma once

#include "calendardays.h"
#include "pluginwidget.h"
#include "schedules.h"
#include "tqplugininterface.h"

#include <QPointer>
#include <QtPlugin>

#include <memory>

class CreationWizard;
class PanelInfoWidget;
class QTimer;
class ScheduleModel;
class ScheduleProxyModel;
class SearchWidget;
class TQStackedToolBars;

namespace scheduleview {
class EmptyListHint;
class ScheduleCreation;
class ScheduleListUpdater;
class ScheduleRequests;
} // namespace scheduleview

namespace Ui {
class ScheduleView;
}

namespace tq5sdk {
class Data;
}

/// The page "Графики": the first tab shows common schedules, the second personal ones.
class ScheduleView final : public PluginWidget, public TQPluginInterface
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "scheduleview")
    Q_INTERFACES(TQPluginInterface)

public:
    explicit ScheduleView(QWidget *parent = nullptr);
    ~ScheduleView() override;

    [[nodiscard]] bool canShow() const override;
    void onTabActivated(int index) override;
    [[nodiscard]] QList<PLUGIN_TAB> tabList() const override;
    void insertedToInterface() override;

    QList<CommandType> init(TQServerInterface *server, const QString &name) override;
    [[nodiscard]] QString pluginName() const override;
    [[nodiscard]] quint32 pluginVersion() const override;
    [[nodiscard]] QString pluginBuild() const override;
    QWidget *widget() override;

    bool eventFilter(QObject *watched, QEvent *event) override;

    [[nodiscard]] QString newScheduleName() const;

signals:
    /// The outcome of a wizard's request; reaches only that wizard. For an empty \a message the wizard shows a standard
    /// text.
    void createScheduleFinished(bool ok, const QString &message);
    /// The reply to `sendGetCalandarDays`.
    void calandarDaysReceived(int scheduleId, const QList<orvex::SCHEDULE_CALENDAR_DAY> &days);
    /// The days of the next `calandarDaysReceived` are those of \a year.
    void calendarYearReceived(int year);
    /// Another page requests the editor of a schedule.
    void showEditDialog(qint32 scheduleId);
    /// Unanswered requests can be repeated.
    void connectionRestored();

public slots:
    void appendSchedule();
    // Requests of the wizard, which must be the sender.
    void createFixedSchedule();
    void createShiftSchedule();
    void createUnregulSchedule();
    void createCalendarSchedule();
    void appendPersonalSchedule();
    /// Request of the wizard, which must be the sender.
    void createPersonalSchedule();
    /// Opens the editor of the table's current schedule.
    void editPersonalSchedule();
    /// Opens the editor of a schedule of any type; 0: of the table's current one.
    void editSchedule(qint32 id = 0);
    void deleteSchedule();
    void deletePersonalSchedule();
    void scheduleRead(const QList<quint32> &ids);
    void scheduleRemoved(const QList<quint32> &ids);
    void applyFilter();
    void scheduleSelectionChanged();
    void scheduleDoubleClicked();
    void updateInfoPanelDelayed();
    void updateInfoPanel();
    /// Requests the calendar days of the whole \a year; they arrive with `calandarDaysReceived`.
    void sendGetCalandarDays(qint32 id, int year);
    void showShiftGuides();

private:
    void initRequests();
    void initWidgetContents();
    void initTable();
    void initScheduleModel();
    void initPluginActions();
    void connectSignals();
    void updateViewMode();
    void showEditAction(bool common);
    void updateActionsEnabled();
    [[nodiscard]] orvex::SCHEDULE_DATA editedRecord(qint32 id) const;
    void handleKey(int key);

    void openWizard(CreationWizard *wizard);
    /// Runs the editor modally and sends what the operator accepts.
    template <class Dialog> void runEditor(Dialog *editor);
    void reportCreation(CreationWizard *wizard, bool ok, const QString &message);
    void reportCalendarDays(int scheduleId, const QDate &first, const QList<orvex::SCHEDULE_CALENDAR_DAY> &days);

    void showDialog(Command &command);

    tq5sdk::Data *m_sdk = nullptr;
    std::unique_ptr<Ui::ScheduleView> m_ui;
    ScheduleModel *m_model = nullptr;
    ScheduleProxyModel *m_proxy = nullptr;
    PanelInfoWidget *m_infoPanel = nullptr;
    QTimer *const m_infoTimer;
    QPointer<QWidget> m_toolBarContainer;
    QPointer<TQStackedToolBars> m_toolBars; ///< its current index is the view mode
    QPointer<SearchWidget> m_search;
    scheduleview::EmptyListHint *m_hint = nullptr;
    scheduleview::ScheduleRequests *m_requests = nullptr;
    scheduleview::ScheduleCreation *m_creation = nullptr;
    std::unique_ptr<scheduleview::ScheduleListUpdater> m_list;
};
