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
}

namespace Ui {
class ScheduleView;
}

namespace tq5sdk {
class Data;
}

/// The page "Графики": common schedules on its first tab, personal ones on its second.
class ScheduleView : public PluginWidget, public TQPluginInterface
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

    /// The name proposed for a new schedule: the usual one with the next free number.
    [[nodiscard]] QString newScheduleName() const;

signals:
    /// A new schedule has become of what a wizard asked for, or has not; an empty \a message leaves the words to the
    /// wizard.
    void createScheduleFinished(bool ok, const QString &message);
    /// The store's answer to `sendGetCalandarDays`.
    void calandarDaysReceived(int scheduleId, const QList<orvex::SCHEDULE_CALENDAR_DAY> &days);
    /// The editor of a schedule is to be opened on behalf of another page.
    void showEditDialog(qint32 scheduleId);
    /// The store can be asked again for what it could not answer.
    void connectionRestored();

public slots:
    /// Opens the wizard for a common schedule.
    void appendSchedule();
    // A wizard asks for the schedule that its page describes.
    void createFixedSchedule();
    void createShiftSchedule();
    void createUnregulSchedule();
    void createCalendarSchedule();
    /// Opens the wizard for a personal schedule.
    void appendPersonalSchedule();
    /// The wizard of a personal schedule asks for it.
    void createPersonalSchedule();
    /// Opens the editor of the table's current personal schedule.
    void editPersonalSchedule();
    /// Opens the editor of a schedule, of whatever type it is; 0: of the table's current one.
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
    /// Asks for the calendar days of the whole \a year; they come with `calandarDaysReceived`.
    void sendGetCalandarDays(qint32 id, int year);
    /// Opens the shift guide on its page.
    void showShiftGuides();

private:
    /// A schedule on its way into the store. Kept with its requests: the next one may be under way before the answer.
    struct NewSchedule
    {
        orvex::SCHEDULE_DATA record;
        QList<orvex::SCHEDULE_CALENDAR_DAY> days; ///< stored once the schedule exists
        QPointer<CreationWizard> wizard; ///< that requested it; null once it is closed
    };

    void initWidgetContents();
    void initTable();
    void fitList();
    void initScheduleModel();
    void initPluginActions();
    void updateViewMode();
    void showEditAction(bool common);
    void updateActionsEnabled();
    [[nodiscard]] orvex::SCHEDULE_DATA editedRecord(qint32 id) const;
    void handleKey(int key);
    [[nodiscard]] QString deleteQuestion(const QList<int> &rows) const;
    void requestPhoto(quint32 workerId);

    void openWizard(CreationWizard *wizard);
    /// Runs the editor, sends what the operator accepted, and lets the editor go.
    template <class Dialog> void runEditor(Dialog *editor);
    void sendNewSchedule(const NewSchedule &schedule);
    /// Emits `createScheduleFinished`, which reaches only the wizard that requested the schedule.
    void reportCreation(const NewSchedule &schedule, bool ok, const QString &message);
    void reportMissingDays(const NewSchedule &schedule, const QString &reason);
    /// Stores the days of the schedule \a id; false where a \a record of its type has none of its own.
    bool sendCalendarDays(qint32 id, const orvex::SCHEDULE_DATA &record,
                          const QList<orvex::SCHEDULE_CALENDAR_DAY> &days, const Handler &reply);

    void showDialog(Command &command);
    void scheduleInsertResult(Command &command, const NewSchedule &schedule);
    void calendarDaysInsertResult(Command &command, const NewSchedule &schedule);
    /// \a record is what was sent, \a days are what its calendar is to hold.
    void scheduleUpdateResult(Command &command, const orvex::SCHEDULE_DATA &record,
                              const QList<orvex::SCHEDULE_CALENDAR_DAY> &days);
    void calendarDaysUpdateResult(Command &command);
    void scheduleRemoveResult(Command &command);
    void calendarDaysReadResult(Command &command);
    void blobDataRead(Command &command);
    void showGuidesResult(Command &command);
    bool reportFailure(const Command &command, const char *key, const QString &popup);

    tq5sdk::Data *m_sdk = nullptr;
    std::unique_ptr<Ui::ScheduleView> m_ui;
    ScheduleModel *m_model = nullptr;
    ScheduleProxyModel *m_proxy = nullptr;
    PanelInfoWidget *m_infoPanel = nullptr;
    QTimer *m_infoTimer = nullptr;
    quint32 m_awaitedId = 0; ///< the schedule to select as soon as the storage reports it; 0: none
    int m_scheduleSortColumn = -1;
    int m_scheduleSortOrder = -1;
    int m_personalSortColumn = -1;
    int m_personalSortOrder = -1;
    QPointer<QWidget> m_toolBarContainer;
    QPointer<TQStackedToolBars> m_toolBars; ///< its current index is the view mode
    QPointer<SearchWidget> m_search;
    scheduleview::EmptyListHint *m_hint = nullptr;
};
