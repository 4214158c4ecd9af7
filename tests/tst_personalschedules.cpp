#include "calendarcells.h"
#include "calendarmonthwidget.h"
#include "clientcache.h"
#include "datanames.h"
#include "finishwizardpage.h"
#include "hands.h"
#include "localstorage.h"
#include "objecttreemodel.h"
#include "personalcalendarwizardspage.h"
#include "personalemployeewizardpage.h"
#include "personalscheduleeditdialog.h"
#include "personalschedulewizard.h"
#include "sampleguide.h"
#include "sampleobjects.h"
#include "sampleorganisation.h"
#include "samplerecords.h"
#include "schedulenamewidget.h"
#include "storagechange.h"
#include "testcolumns.h"
#include "wizardpageids.h"

#include <QAbstractButton>
#include <QApplication>
#include <QBuffer>
#include <QCheckBox>
#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTableView>
#include <QTreeView>
#include <QtTest>

using namespace orvex;
using namespace support;

namespace {

using Days = QList<SCHEDULE_CALENDAR_DAY>;

const QDate August(2026, 8, 1);

SCHEDULE_DATA augustOf(quint32 employeeId)
{
    auto record = personalSchedule(50, QStringLiteral("Август"), employeeId, August);
    record.color = QStringLiteral("#a0d8b0");
    record.useHolidays = 1;
    record.version = 3;
    return record;
}

QByteArray photo()
{
    QImage image(30, 40, QImage::Format_RGB32);
    image.fill(Qt::red);
    QByteArray data;
    QBuffer buffer(&data);
    image.save(&buffer, "PNG");
    return data;
}

} // namespace

class TestPersonalSchedules : public QObject
{
    Q_OBJECT

private slots:
    void init() { organisation::fill(); }

    void shouldAcceptOnlyEmployee()
    {
        PersonalScheduleWizard wizard;
        open(wizard);
        QCOMPARE(shownRows(wizard), QList<quint32>({organisation::Root, organisation::Firm}));
        QVERIFY(!canContinue(wizard));
        choose(wizard, organisation::Plant);
        QVERIFY(!canContinue(wizard));
        QCOMPARE(wizard.employeePage()->employeeId(), 0u);
        choose(wizard, organisation::Petrov);
        QVERIFY(canContinue(wizard));
        QCOMPARE(wizard.employeePage()->employeeId(), organisation::Petrov);

        doubleClickCell(tree(wizard), find(wizard, organisation::Petrov));
        QCOMPARE(wizard.currentId(), int(personalwizard::CalendarPageId));
    }

    void shouldSearchTextTypedInTree()
    {
        PersonalScheduleWizard wizard;
        open(wizard);
        choose(wizard, organisation::Petrov);
        typeText(tree(wizard), QStringLiteral("0"));
        typeText(QApplication::focusWidget(), QStringLiteral("017"));
        QCOMPARE(searchEdit(wizard)->text(), QStringLiteral("0017"));
        QCOMPARE(shownRows(wizard).last(), organisation::Ivanova);
    }

    void shouldRestoreTreeAfterSearch()
    {
        PersonalScheduleWizard wizard;
        open(wizard);
        tree(wizard)->expand(find(wizard, organisation::Firm));
        const auto before = shownRows(wizard);
        const auto *hint = wizard.findChild<QLabel *>(QStringLiteral("lbHint"));
        QVERIFY(hint->isHidden());
        typeText(searchEdit(wizard), QStringLiteral("нет такого"));
        QVERIFY(shownRows(wizard).isEmpty());
        QVERIFY(hint->isVisible());
        searchEdit(wizard)->clear();
        QCOMPARE(shownRows(wizard), before);

        typeText(searchEdit(wizard), QStringLiteral("иванова"));
        QTest::keyClick(searchEdit(wizard), Qt::Key_Escape);
        QCOMPARE(shownRows(wizard), before);
        QVERIFY(wizard.isVisible());
    }

    void shouldDeselectEmployeeHiddenBySearch()
    {
        PersonalScheduleWizard wizard;
        open(wizard);
        choose(wizard, organisation::Petrov);
        typeText(searchEdit(wizard), QStringLiteral("Пет"));
        QVERIFY(canContinue(wizard));
        typeText(searchEdit(wizard), QStringLiteral("ух"));
        QVERIFY(!canContinue(wizard));
    }

    void shouldNotContinueWithRemovedEmployee()
    {
        PersonalScheduleWizard wizard;
        open(wizard);
        choose(wizard, organisation::Petrov);
        organisation::storeEmployees({}, {organisation::Petrov});
        QVERIFY(!canContinue(wizard));

        choose(wizard, organisation::Ivanova);
        click(wizard, QWizard::NextButton);
        QVERIFY(canContinue(wizard));
        organisation::storeEmployees({}, {organisation::Ivanova});
        QTRY_VERIFY(!canContinue(wizard));
        QCOMPARE(label(wizard, "lbNotice"), QStringLiteral("Сотрудник удалён."));
        QVERIFY(wizard.button(QWizard::BackButton)->isEnabled());
    }

    void shouldShowEmployee_data()
    {
        addColumns<quint32, QStringList>({"id", "labels"});
        const auto row = [](const char *name, quint32 id, const char *labels) {
            QTest::newRow(name) << id << QString(labels).split('|');
        };
        using namespace organisation;
        row("with a main schedule", Ivanova, "ФИО: Иванова Мария|Табельный номер: 0017|Основной график: Сменный 2/2|");
        row("without one", Petrov, "ФИО: Петров Пётр|Табельный номер: 0042|Основной график: <Не назначен>|");
        row("with a removed one, and markup in the name", Markup,
            "ФИО: <b>Сидоров</b> & Ко|Табельный номер: <i>7</i>|Основной график: <Не назначен>|");
        row("deleted", Gone, "ФИО: Яшин Олег|Табельный номер: |Основной график: <Не назначен>|Сотрудник удалён.");
    }

    void shouldShowEmployee()
    {
        QFETCH(quint32, id);
        QFETCH(QStringList, labels);
        PersonalScheduleWizard wizard;
        openCalendar(wizard, id);
        PersonalScheduleEditDialog dialog(augustOf(id));
        for (const QWidget *window : {static_cast<QWidget *>(&wizard), static_cast<QWidget *>(&dialog)}) {
            QStringList shown;
            for (const char *name : {"lbName", "lbNumber", "lbMainSchedule", "lbNotice"}) {
                shown.append(label(*window, name));
                QCOMPARE(window->findChild<QLabel *>(QLatin1String(name))->textFormat(), Qt::PlainText);
            }
            QCOMPARE(shown, labels);
            QVERIFY(window->findChild<QWidget *>(QStringLiteral("nameWidget"))->isHidden());
        }
    }

    void shouldShowOtherEmployeeAfterGoingBack()
    {
        PersonalScheduleWizard wizard;
        openCalendar(wizard, organisation::Ivanova);
        auto renamed = employee(organisation::Ivanova, QStringLiteral("Иванова-Белая Мария"), QStringLiteral("0018"),
                                organisation::Office);
        organisation::storeEmployees({renamed});
        QCOMPARE(label(wizard, "lbName"), QStringLiteral("ФИО: Иванова-Белая Мария"));
        QCOMPARE(label(wizard, "lbNumber"), QStringLiteral("Табельный номер: 0018"));
        click(wizard, QWizard::BackButton);
        choose(wizard, organisation::Petrov);
        click(wizard, QWizard::NextButton);
        QCOMPARE(label(wizard, "lbName"), QStringLiteral("ФИО: Петров Пётр"));
        QCOMPARE(wizard.findChild<QLineEdit *>(QStringLiteral("leScheduleName"))->text(),
                 QStringLiteral("Петров Пётр"));
    }

    void shouldKeepPhotoUpToDate()
    {
        PersonalScheduleWizard wizard;
        open(wizard);
        QSignalSpy requests(&wizard, &PersonalScheduleWizard::photoRequest);
        choose(wizard, organisation::Petrov);
        click(wizard, QWizard::NextButton);
        QTRY_COMPARE(requests.size(), 1);
        QCOMPARE(requests.takeFirst().first().toUInt(), organisation::Petrov);

        const auto shown = [&] {
            return wizard.findChild<QLabel *>(QStringLiteral("lbPhoto"))->pixmap(Qt::ReturnByValue).toImage();
        };
        auto *storage = LocalStorage::instance();
        const QImage none = shown();
        QVERIFY(!none.isNull());
        storage->setBlob(organisation::Petrov, db::param::PHOTO, photo());
        QCOMPARE(shown().pixelColor(10, 10), QColor(Qt::red));
        storage->setBlob(organisation::Ivanova, db::param::PHOTO, "of somebody else");
        QCOMPARE(shown().pixelColor(10, 10), QColor(Qt::red));
        storage->setBlob(organisation::Petrov, db::param::PHOTO, QByteArray(50 * 1024 * 1024, 'x'));
        QCOMPARE(shown(), none);

        orvex::StorageChange change;
        change.changedBlobs.insert(organisation::Petrov, {db::param::PHOTO});
        storage->apply(change);
        QCOMPARE(requests.size(), 1);
    }

    void shouldWarnOfExistingSchedule()
    {
        storeSchedules({augustOf(organisation::Petrov)});
        PersonalScheduleWizard wizard;
        openCalendar(wizard, organisation::Petrov);
        auto *calendar = wizard.findChild<CalendarMonthWidget *>();
        const auto *notice = wizard.findChild<QLabel *>(QStringLiteral("lbNotice"));
        calendar->setDate(QDate(2026, 9, 1));
        QVERIFY(notice->isHidden());
        calendar->setDate(August);
        QVERIFY(notice->isVisible());
        storeSchedules({}, {50});
        QTRY_VERIFY(notice->isHidden());
        storeSchedules({augustOf(organisation::Ivanova)});
        QVERIFY(notice->isHidden());
        storeSchedules({augustOf(organisation::Petrov)});
        QVERIFY(notice->isVisible());
        // The operator may continue: creation checks it again.
        QVERIFY(canContinue(wizard));
    }

    void shouldReturnDaysOfShownMonthOnly()
    {
        PersonalScheduleWizard wizard;
        openCalendar(wizard, organisation::Petrov);
        auto *calendar = wizard.findChild<CalendarMonthWidget *>();
        calendar->setDate(QDate(2026, 7, 1));
        mark(wizard, QDate(2026, 7, 31), guide::Night);
        calendar->setDate(QDate(2026, 9, 1));
        mark(wizard, QDate(2026, 9, 1), guide::Night);
        calendar->setDate(August);
        mark(wizard, QDate(2026, 8, 1), guide::Day);
        mark(wizard, QDate(2026, 8, 31), guide::Night);
        const auto days = wizard.calendarPage()->days();
        QCOMPARE(days.size(), 2);
        QCOMPARE(days.at(0).date, QDate(2026, 8, 1));
        QCOMPARE(days.at(1).shiftId, guide::Night);
        QCOMPARE(wizard.calendarPage()->date(), August);
    }

    void shouldRequestScheduleBeforeLastPage()
    {
        PersonalScheduleWizard wizard;
        open(wizard);
        QSignalSpy requests(&wizard, &PersonalScheduleWizard::createPersonalSchedule);
        QSignalSpy guides(&wizard, &PersonalScheduleWizard::showShiftGuides);
        QVERIFY(!wizard.button(QWizard::BackButton)->isVisible());
        choose(wizard, organisation::Petrov);
        click(wizard, QWizard::NextButton);
        emit wizard.findChild<CalendarMonthWidget *>()->showShiftGuides();
        QCOMPARE(guides.size(), 1);
        click(wizard, QWizard::NextButton);
        QCOMPARE(requests.size(), 1);
        QCOMPARE(wizard.currentId(), int(personalwizard::FinishPageId));
    }

    void shouldShowEditedSchedule()
    {
        PersonalScheduleEditDialog dialog(augustOf(organisation::Petrov));
        QSignalSpy photos(&dialog, &PersonalScheduleEditDialog::photoRequest);
        open(dialog);
        QTRY_COMPARE(photos.size(), 1);
        auto *calendar = dialog.findChild<CalendarMonthWidget *>();
        QCOMPARE(calendar->date(), August);
        QVERIFY(!calendar->isDateEnabled());
        QVERIFY(dialog.findChild<QCheckBox *>(QStringLiteral("cbUseHolidays"))->isChecked());
        QVERIFY(!dialog.findChild<QLineEdit *>(QStringLiteral("leScheduleName"))->isEnabled());
        QVERIFY(qobject_cast<QTableView *>(QApplication::focusWidget()));
        QSignalSpy guides(&dialog, &PersonalScheduleEditDialog::showShiftGuides);
        emit calendar->showShiftGuides();
        QCOMPARE(guides.size(), 1);
    }

    void shouldKeepEditsWhenDaysArriveAgain()
    {
        PersonalScheduleEditDialog dialog(augustOf(organisation::Petrov));
        QSignalSpy asked(&dialog, &PersonalScheduleEditDialog::calendarDaysRequest);
        dialog.requestMissingDays();
        QCOMPARE(asked.size(), 1);
        dialog.setCalendarDays(50, {calendarDay(August, guide::Day), calendarDay(August.addDays(1), guide::Day)});
        mark(dialog, August, guide::Night);
        mark(dialog, August.addDays(5), guide::Short);
        dialog.setCalendarDays(50, {calendarDay(August, guide::Day), calendarDay(August.addDays(1), guide::Short)});
        dialog.requestMissingDays();
        QCOMPARE(asked.size(), 1);
        QTest::ignoreMessage(QtWarningMsg, "wrong schedule id 50 51");
        dialog.setCalendarDays(51, {calendarDay(August.addDays(1), guide::Night)});
        QMap<QDate, quint32> shifts;
        for (const auto &day : dialog.calendarDays())
            shifts.insert(day.date, day.shiftId);
        QCOMPARE(shifts,
                 (QMap<QDate, quint32>{
                     {August, guide::Night}, {August.addDays(1), guide::Short}, {August.addDays(5), guide::Short}}));
    }

    void shouldReturnEditsOnlyWhenAccepted()
    {
        const auto record = augustOf(organisation::Petrov);
        for (const bool accept : {true, false}) {
            PersonalScheduleEditDialog dialog(record);
            open(dialog);
            clickWidget(dialog.findChild<QCheckBox *>(QStringLiteral("cbUseHolidays")));
            dialog.findChild<ScheduleNameWidget *>()->setColor({});
            clickButton(dialog, accept ? QDialogButtonBox::Ok : QDialogButtonBox::Cancel);
            QCOMPARE(dialog.result(), int(accept ? QDialog::Accepted : QDialog::Rejected));
            auto expected = record;
            if (accept) {
                expected.useHolidays = 0;
                expected.color.clear();
            }
            QCOMPARE(dialog.schedule(), expected);
        }
    }

private:
    [[nodiscard]] static QTreeView *tree(const QWidget &wizard)
    {
        return wizard.findChild<QTreeView *>(QStringLiteral("employeeView"));
    }

    [[nodiscard]] static QLineEdit *searchEdit(const QWidget &wizard)
    {
        return wizard.findChild<QLineEdit *>(QStringLiteral("searchEdit"));
    }

    [[nodiscard]] static QModelIndex find(const QWidget &wizard, quint32 id)
    {
        return findRow(*tree(wizard)->model(), id);
    }

    /// The visible rows of the tree.
    [[nodiscard]] static QList<quint32> shownRows(const QWidget &wizard)
    {
        QList<quint32> rows;
        const auto *view = tree(wizard);
        for (QModelIndex index = view->model()->index(0, 0); index.isValid(); index = view->indexBelow(index))
            rows.append(index.data().toUInt());
        return rows;
    }

    [[nodiscard]] static QString label(const QWidget &window, const char *name)
    {
        return window.findChild<QLabel *>(QLatin1String(name))->text();
    }

    static void choose(PersonalScheduleWizard &wizard, quint32 id) { clickCell(tree(wizard), find(wizard, id)); }

    static void click(PersonalScheduleWizard &wizard, QWizard::WizardButton button) { clickButton(wizard, button); }

    static void open(QWidget &window)
    {
        window.show();
        activateWindow(&window);
    }

    /// Opens the wizard on the month of an employee.
    static void openCalendar(PersonalScheduleWizard &wizard, quint32 employee)
    {
        open(wizard);
        choose(wizard, employee);
        click(wizard, QWizard::NextButton);
    }

    [[nodiscard]] static bool canContinue(const PersonalScheduleWizard &wizard)
    {
        return wizard.button(QWizard::NextButton)->isEnabled();
    }

    static void mark(const QWidget &window, const QDate &date, quint32 shiftId)
    {
        QVERIFY(putShift(window.findChild<QTableView *>(QStringLiteral("calendarView"))->model(), date, shiftId));
    }
};

QTEST_MAIN(TestPersonalSchedules)
#include "tst_personalschedules.moc"
