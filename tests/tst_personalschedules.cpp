#include "calendarcells.h"
#include "calendarmonthwidget.h"
#include "clientcache.h"
#include "datanames.h"
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
#include <QCheckBox>
#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
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
    auto record = personalSchedule(50, "Август", employeeId, August);
    record.color = "#a0d8b0";
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
    void init()
    {
        organisation::fill();
        m_wizard = std::make_unique<PersonalScheduleWizard>();
        open(*m_wizard);
    }

    void cleanup() { m_wizard.reset(); }

    void shouldAcceptOnlyEmployee()
    {
        QCOMPARE(shownRows(), QList<quint32>({organisation::Root, organisation::Firm}));
        QVERIFY(!canContinue());
        QVERIFY(!m_wizard->button(QWizard::BackButton)->isVisible());
        choose(organisation::Plant);
        QVERIFY(!canContinue());
        QCOMPARE(m_wizard->employeePage()->employeeId(), 0u);
        choose(organisation::Petrov);
        QVERIFY(canContinue());
        QCOMPARE(m_wizard->employeePage()->employeeId(), organisation::Petrov);

        doubleClickCell(tree(), find(organisation::Petrov));
        QCOMPARE(m_wizard->currentId(), int(personalwizard::CalendarPageId));
    }

    void shouldSearchTextTypedInTree()
    {
        choose(organisation::Petrov);
        typeText(tree(), "0");
        typeText(QApplication::focusWidget(), "017");
        QCOMPARE(searchEdit()->text(), "0017");
        QCOMPARE(shownRows().last(), organisation::Ivanova);
    }

    void shouldRestoreTreeAfterSearch()
    {
        tree()->expand(find(organisation::Firm));
        const auto before = shownRows();
        const auto *hint = m_wizard->findChild<QLabel *>("lbHint");
        QVERIFY(hint->isHidden());
        typeText(searchEdit(), "нет такого");
        QVERIFY(shownRows().isEmpty());
        QVERIFY(hint->isVisible());
        searchEdit()->clear();
        QCOMPARE(shownRows(), before);

        typeText(searchEdit(), "иванова");
        QTest::keyClick(searchEdit(), Qt::Key_Escape);
        QCOMPARE(shownRows(), before);
        QVERIFY(m_wizard->isVisible());
    }

    void shouldDeselectEmployeeHiddenBySearch()
    {
        choose(organisation::Petrov);
        typeText(searchEdit(), "Пет");
        QVERIFY(canContinue());
        typeText(searchEdit(), "ух");
        QVERIFY(!canContinue());
    }

    void shouldNotContinueWithRemovedEmployee()
    {
        choose(organisation::Petrov);
        organisation::storeEmployees({}, {organisation::Petrov});
        QVERIFY(!canContinue());

        choose(organisation::Ivanova);
        click(QWizard::NextButton);
        QVERIFY(canContinue());
        organisation::storeEmployees({}, {organisation::Ivanova});
        QTRY_VERIFY(!canContinue());
        QCOMPARE(label(*m_wizard, "lbNotice"), "Сотрудник удалён.");
        QVERIFY(m_wizard->button(QWizard::BackButton)->isEnabled());
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
        openCalendar(id);
        PersonalScheduleEditDialog dialog(augustOf(id));
        for (const QWidget *window : {static_cast<QWidget *>(m_wizard.get()), static_cast<QWidget *>(&dialog)}) {
            QStringList shown;
            for (const char *name : {"lbName", "lbNumber", "lbMainSchedule", "lbNotice"}) {
                shown.append(label(*window, name));
                QCOMPARE(window->findChild<QLabel *>(QLatin1String(name))->textFormat(), Qt::PlainText);
            }
            QCOMPARE(shown, labels);
            QVERIFY(window->findChild<QWidget *>("nameWidget")->isHidden());
        }
    }

    void shouldShowOtherEmployeeAfterGoingBack()
    {
        openCalendar(organisation::Ivanova);
        auto renamed = employee(organisation::Ivanova, "Иванова-Белая Мария", "0018", organisation::Office);
        organisation::storeEmployees({renamed});
        QCOMPARE(label(*m_wizard, "lbName"), "ФИО: Иванова-Белая Мария");
        QCOMPARE(label(*m_wizard, "lbNumber"), "Табельный номер: 0018");
        click(QWizard::BackButton);
        choose(organisation::Petrov);
        click(QWizard::NextButton);
        QCOMPARE(label(*m_wizard, "lbName"), "ФИО: Петров Пётр");
        QCOMPARE(m_wizard->findChild<QLineEdit *>("leScheduleName")->text(), "Петров Пётр");
    }

    void shouldKeepPhotoUpToDate()
    {
        QSignalSpy requests(m_wizard.get(), &PersonalScheduleWizard::photoRequest);
        choose(organisation::Petrov);
        click(QWizard::NextButton);
        QTRY_COMPARE(requests.size(), 1);
        QCOMPARE(requests.takeFirst().first().toUInt(), organisation::Petrov);

        const auto shown = [&] {
            return m_wizard->findChild<QLabel *>("lbPhoto")->pixmap(Qt::ReturnByValue).toImage();
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

    void shouldWarnAboutExistingSchedule()
    {
        storeSchedules({augustOf(organisation::Petrov)});
        openCalendar(organisation::Petrov);
        auto *calendar = m_wizard->findChild<CalendarMonthWidget *>();
        const auto *notice = m_wizard->findChild<QLabel *>("lbNotice");
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
        QVERIFY(canContinue());
    }

    void shouldReturnDaysOfShownMonthOnly()
    {
        openCalendar(organisation::Petrov);
        auto *calendar = m_wizard->findChild<CalendarMonthWidget *>();
        calendar->setDate(QDate(2026, 7, 1));
        mark(*m_wizard, QDate(2026, 7, 31), guide::Night);
        calendar->setDate(QDate(2026, 9, 1));
        mark(*m_wizard, QDate(2026, 9, 1), guide::Night);
        calendar->setDate(August);
        mark(*m_wizard, QDate(2026, 8, 1), guide::Day);
        mark(*m_wizard, QDate(2026, 8, 31), guide::Night);
        QCOMPARE(shiftsByDate(m_wizard->calendarPage()->days()),
                 (QMap<QDate, quint32>{{August, guide::Day}, {August.addDays(30), guide::Night}}));
        QSignalSpy guides(m_wizard.get(), &PersonalScheduleWizard::showShiftGuides);
        emit calendar->showShiftGuides();
        QCOMPARE(guides.size(), 1);
        QCOMPARE(m_wizard->calendarPage()->date(), August);
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
        QVERIFY(dialog.findChild<QCheckBox *>("cbUseHolidays")->isChecked());
        QVERIFY(!dialog.findChild<QLineEdit *>("leScheduleName")->isEnabled());
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
        QCOMPARE(shiftsByDate(dialog.calendarDays()),
                 (QMap<QDate, quint32>{
                     {August, guide::Night}, {August.addDays(1), guide::Short}, {August.addDays(5), guide::Short}}));
    }

    void shouldReturnEditsOnlyWhenAccepted()
    {
        const auto record = augustOf(organisation::Petrov);
        for (const bool accept : {true, false}) {
            PersonalScheduleEditDialog dialog(record);
            open(dialog);
            clickWidget(dialog.findChild<QCheckBox *>("cbUseHolidays"));
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
    [[nodiscard]] QTreeView *tree() const { return findWidget<QTreeView>(*m_wizard, "employeeView"); }
    [[nodiscard]] QLineEdit *searchEdit() const { return findWidget<QLineEdit>(*m_wizard, "searchEdit"); }
    [[nodiscard]] QModelIndex find(quint32 id) const { return findRow(*tree()->model(), id); }

    /// The visible rows of the tree.
    [[nodiscard]] QList<quint32> shownRows() const
    {
        QList<quint32> rows;
        for (QModelIndex row = tree()->model()->index(0, 0); row.isValid(); row = tree()->indexBelow(row))
            rows.append(row.data().toUInt());
        return rows;
    }

    [[nodiscard]] static QString label(const QWidget &window, const char *name)
    {
        return findWidget<QLabel>(window, name)->text();
    }

    void choose(quint32 id) { clickCell(tree(), find(id)); }
    void click(QWizard::WizardButton button) { clickButton(*m_wizard, button); }
    [[nodiscard]] bool canContinue() const { return m_wizard->button(QWizard::NextButton)->isEnabled(); }

    /// Opens the page with the month of an employee.
    void openCalendar(quint32 employee)
    {
        choose(employee);
        click(QWizard::NextButton);
    }

    static void open(QWidget &window)
    {
        window.show();
        activateWindow(&window);
    }

    static void mark(const QWidget &window, const QDate &date, quint32 shiftId)
    {
        QVERIFY(putShift(findWidget<QTableView>(window, "calendarView")->model(), date, shiftId));
    }

    std::unique_ptr<PersonalScheduleWizard> m_wizard;
};

QTEST_MAIN(TestPersonalSchedules)
#include "tst_personalschedules.moc"
