#include "clientfixture.h"

#include <QDialogButtonBox>
#include <QPushButton>
#include <QtTest>

/// An operator puts shifts on a fortnight of a calendar schedule, repeats it to the end of the year, saves and opens
/// the schedule again, in the running client on a real store.
class TestCalendarJourney : public QObject
{
    Q_OBJECT

private slots:
    void shouldRepeatAFortnightToTheEndOfTheYear_data()
    {
        QTest::addColumn<bool>("mouse");
        QTest::newRow("mouse") << true;
        QTest::newRow("keyboard") << false;
    }
    void shouldRepeatAFortnightToTheEndOfTheYear()
    {
        QFETCH(bool, mouse);
        m_isMouse = mouse;
        m_client = std::make_unique<ClientFixture>(QStringLiteral(PLUGIN_FOLDER));
        auto schedule = StoreFixture::schedule(QStringLiteral("Вахта"), orvex::ScheduleCalendar);
        schedule.startDate = QDate(QDate::currentDate().year(), 1, 1);
        schedule = m_client->store.add(schedule);
        const QDate inMarch(schedule.startDate.year(), 3, 7);
        m_monday = inMarch.addDays(1 - inMarch.dayOfWeek());
        QTRY_COMPARE(m_client->table()->model()->rowCount(), 1);

        edit([this](QDialog &editor) {
            auto &year = *editor.findChild<QTableView *>(QStringLiteral("calendarView"));
            QTRY_VERIFY(year.isEnabled());
            if (!m_isMouse)
                hand::tabTo(QStringLiteral("calendarView"));
            mark(year, m_monday, 5, QStringLiteral("Задать смену"), QStringLiteral("Д День"));
            mark(year, m_monday.addDays(7), 5, QStringLiteral("Задать смену"), QStringLiteral("Н Ночь"));
            mark(year, m_monday, 14, QStringLiteral("Применить периодичность"), QStringLiteral("До конца года"));
            checkMarks(year);
            save(editor);
        });
        const qint64 version = schedule.version;
        const auto storedVersion = [&] { return m_client->store.stored(quint32(schedule.id)).version; };
        QTRY_VERIFY(storedVersion() >= version + 2); // the record, then the days

        edit([this](QDialog &editor) {
            auto &year = *editor.findChild<QTableView *>(QStringLiteral("calendarView"));
            QTRY_VERIFY(year.isEnabled());
            checkMarks(year);
        });
    }
    void cleanup() { m_client.reset(); }

private:
    /// Opens the only schedule and takes the steps in its editor.
    void edit(const std::function<void(QDialog &)> &steps)
    {
        bool opened = false;
        hand::whenOpen([&](QDialog &editor) {
            opened = true;
            steps(editor);
        });
        auto *table = m_client->table();
        hand::activate(m_client->window());
        const QPoint row = table->visualRect(table->model()->index(0, 1)).center();
        QTest::mouseClick(table->viewport(), Qt::LeftButton, {}, row);
        if (m_isMouse)
            QTest::mouseDClick(table->viewport(), Qt::LeftButton, {}, row);
        else
            hand::press(Qt::Key_Return);
        QTRY_VERIFY(opened);
    }

    /// Selects \a count days of one month and picks an entry from their menu.
    void mark(QTableView &year, const QDate &first, int count, const QString &group, const QString &text) const
    {
        if (m_isMouse) {
            hand::clickDay(year, first);
            hand::clickDay(year, first.addDays(count - 1), Qt::ShiftModifier);
        } else {
            hand::goToDay(year, first);
            for (int i = 1; i < count; ++i)
                hand::press(Qt::Key_Right, Qt::ShiftModifier);
        }
        QCOMPARE(year.selectionModel()->selectedIndexes().size(), count);
        if (m_isMouse)
            hand::clickMenu(year, group, text);
        else
            hand::keyMenu(group, text);
    }

    void save(const QDialog &editor) const
    {
        if (m_isMouse) {
            const auto *box = editor.findChild<QDialogButtonBox *>(QStringLiteral("buttonBox"));
            QTest::mouseClick(box->button(QDialogButtonBox::Ok), Qt::LeftButton);
        } else {
            hand::press(Qt::Key_Return);
        }
        QVERIFY(!editor.isVisible());
    }

    void checkMarks(const QTableView &year) const
    {
        const QDate newYear(m_monday.year(), 1, 1);
        for (QDate date = newYear; date.year() == newYear.year(); date = date.addDays(1)) {
            const auto day = m_monday.daysTo(date);
            const auto week = day < 0 || day % 7 > 4 ? -1 : day % 14 / 7;
            const quint32 wanted = week < 0 ? 0 : week == 0 ? m_client->store.dayShift : m_client->store.nightShift;
            QCOMPARE(hand::cell(year, date).data(CalendarShiftRole).toUInt(), wanted);
        }
    }

    std::unique_ptr<ClientFixture> m_client;
    bool m_isMouse = true;
    QDate m_monday; ///< of the first full week in March
};

QTEST_MAIN(TestCalendarJourney)
#include "tst_calendarjourney.moc"
