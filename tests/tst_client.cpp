#include "authdata.h"
#include "client.h"
#include "database.h"
#include "picturetaker.h"
#include "popupstack.h"
#include "storefixture.h"

#include <QDialog>
#include <QFile>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QSettings>
#include <QSignalSpy>
#include <QTabBar>
#include <QToolButton>
#include <QtTest>

#include <algorithm>

namespace {

/// The calls that the test plug-ins have recorded since the last time.
QStringList takeCalls()
{
    const QStringList calls = qApp->property("calls").toStringList();
    qApp->setProperty("calls", QStringList());
    return calls;
}

/// From top to bottom.
QList<Popup *> shownPopups(const QWidget &window)
{
    QList<Popup *> shown;
    const auto popups = window.findChildren<Popup *>();
    for (auto *popup : popups) {
        if (popup->isVisible())
            shown.append(popup);
    }
    std::sort(shown.begin(), shown.end(), [](const Popup *a, const Popup *b) { return a->y() < b->y(); });
    return shown;
}

/// A page with pop-ups.
class PopupPage : public QMainWindow
{
public:
    PopupPage()
    {
        setCentralWidget(edit);
        resize(900, 600);
    }
    QLineEdit *edit = new QLineEdit(this);
    PopupStack *popups = new PopupStack(edit);
};

} // namespace

class TestClient : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, m_folder.filePath(QStringLiteral("settings")));
        m_store = store::StoreAddress::file(m_folder.filePath(QStringLiteral("test.db")));
        const auto created = store::Database::create(m_store);
        QVERIFY2(created.ok(), qPrintable(created.message()));
        tqstyles::install();
    }

    void init() { takeCalls(); }

    void shouldCallPluginsInOrder()
    {
        {
            Client client(options({"a_dependent", "b_base"}));
            start(client);
            QCOMPARE(takeCalls(),
                     QStringList({"base.init", "base.inserted", "base.tabs", "base.tab 1", "base.ready",
                                  "dependent.init", "dependent.inserted", "dependent.tabs", "dependent.tab 1",
                                  "dependent.ready", "base.activated"}));
            QVERIFY(!AuthData::sessionId().isEmpty());
            QVERIFY(!AuthData::login().isEmpty());
            QVERIFY(
                client.window().findChild<QLabel *>(QStringLiteral("loginText"))->text().contains(AuthData::login()));
            QVERIFY(client.window()
                        .findChild<QLabel *>(QStringLiteral("connectionText"))
                        ->text()
                        .contains(QStringLiteral("test.db")));
        }
        QCOMPARE(takeCalls(), QStringList({"dependent.uninit", "base.uninit"}));
        QCOMPARE(AuthData::sessionId(), QString());
    }

    void shouldReportEachPluginThatFails()
    {
        auto wanted = options({"b_base", "c_throws_at_start", "d_throws_in_window", "e_orphan", "f_follower"});
        QFile broken(wanted.plugins + QStringLiteral("/g_broken.so"));
        QVERIFY(broken.open(QIODevice::WriteOnly));
        broken.write("not a library");
        broken.close();
        QVERIFY(
            QFile::copy(wanted.plugins + QStringLiteral("/b_base.so"), wanted.plugins + QStringLiteral("/h_twin.so")));
        QFile note(wanted.plugins + QStringLiteral("/readme.txt"));
        QVERIFY(note.open(QIODevice::WriteOnly));
        note.close();

        Client client(wanted);
        start(client);
        QCOMPARE(client.window().shownPages(), QStringList{"base"});
        auto *text = client.window().findChild<QLabel *>(QStringLiteral("noticeText"));
        QVERIFY(text->isVisible());
        const QStringList lines = text->text().split(QLatin1Char('\n'));
        QCOMPARE(lines.size(), 6);
        const auto says = [&lines](const char *file, const char *reason) {
            const auto matches = [&](const QString &line) {
                return line.contains(QLatin1String(file)) && line.contains(QString::fromUtf8(reason));
            };
            return std::count_if(lines.cbegin(), lines.cend(), matches) == 1;
        };
        QVERIFY(says("c_throws_at_start.so", "no licence"));
        QVERIFY(says("d_throws_in_window.so", "неизвестной ошибке"));
        QVERIFY(says("e_orphan.so", "nobody"));
        QVERIFY(says("f_follower.so", "windowthrower"));
        QVERIFY(says("g_broken.so", "повреждён"));
        QVERIFY(says("h_twin.so", "уже загружен"));
        QVERIFY(!takeCalls().contains(QStringLiteral("follower.init")));

        QTest::mouseClick(client.window().findChild<QToolButton *>(QStringLiteral("noticeClose")), Qt::LeftButton);
        QVERIFY(!text->isVisible());
    }

    void shouldSwitchTabsAndPagesByMouseAndKeyboard()
    {
        Client client(options({"a_dependent", "b_base"}));
        start(client);
        takeCalls();
        auto *tabs = client.window().findChild<QTabBar *>(QStringLiteral("pageTabs"));
        auto *list = client.window().findChild<QListWidget *>(QStringLiteral("pageList"));
        QCOMPARE(tabs->count(), 2);
        QVERIFY(qobject_cast<QLineEdit *>(client.window().focusWidget()));
        QTest::mouseClick(tabs, Qt::LeftButton, {}, tabs->tabRect(0).center());
        QTest::keyClick(&client.window(), Qt::Key_Tab, Qt::ControlModifier);
        QCOMPARE(takeCalls(), QStringList({"base.tab 0", "base.tab 1"}));

        list->setFocus();
        QTest::keyClick(list, Qt::Key_Down);
        QCOMPARE(takeCalls(), QStringList{"dependent.activated"});
        QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualItemRect(list->item(0)).center());
        QCOMPARE(takeCalls(), QStringList{"base.activated"});
        QTest::keyClick(list, Qt::Key_Return);
        QVERIFY(qobject_cast<QLineEdit *>(client.window().focusWidget()));
    }

    void shouldReportChangedRolesOnce()
    {
        const QSignalSpy changed(AuthData::instance(), &AuthData::rolesChanged);
        AuthData::setRoles({"RL_SCHEDULE_SHOW", "RL_SCHEDULE_CREATE"});
        AuthData::setRoles({"RL_SCHEDULE_CREATE", "RL_SCHEDULE_SHOW"});
        QCOMPARE(changed.count(), 1);
        AuthData::setRoles({"RL_SCHEDULE_CREATE"});
        QCOMPARE(changed.count(), 2);
        AuthData::signOut();
        AuthData::signOut();
        QCOMPARE(changed.count(), 3);
        QCOMPARE(AuthData::roles(), QStringList());
    }

    void shouldShowAndHidePagesWhenRightsChange()
    {
        const StoreFixture fixture;
        fixture.sql(QStringLiteral("DELETE FROM granted_role WHERE role = 'RL_SCHEDULE_SHOW'"));
        auto wanted = options({"a_dependent", "b_base"});
        wanted.store = fixture.address();
        QStringList rolesAtSignal;
        Client client(wanted);
        start(client);
        const auto &window = client.window();
        const auto *basePage = window.findChild<QWidget *>(QStringLiteral("basePage"));
        const auto *dependentPage = window.findChild<QWidget *>(QStringLiteral("dependentPage"));
        QCOMPARE(window.shownPages(), QStringList{"dependent"});
        QVERIFY(!client.window().showPage(QStringLiteral("base")));
        const QSignalSpy changed(AuthData::instance(), &AuthData::rolesChanged);
        connect(AuthData::instance(), &AuthData::rolesChanged, &client, [&rolesAtSignal] {
            QCOMPARE(QThread::currentThread(), qApp->thread());
            rolesAtSignal = AuthData::roles();
        });

        fixture.sql(QStringLiteral("INSERT INTO granted_role (role) VALUES ('RL_SCHEDULE_SHOW')"));
        QTRY_COMPARE(window.shownPages(), QStringList({"base", "dependent"}));
        QVERIFY(dependentPage->isVisible());
        QVERIFY(rolesAtSignal.contains(QStringLiteral("RL_SCHEDULE_SHOW")));

        fixture.sql(QStringLiteral("DELETE FROM granted_role WHERE role = 'RL_SCHEDULE_UPDATE'"));
        QTRY_COMPARE(window.shownPages(), QStringList{"base"});
        QVERIFY(basePage->isVisible() && !dependentPage->isVisible());
        QVERIFY(!client.window().showPage(QStringLiteral("dependent")));

        fixture.sql(QStringLiteral("DELETE FROM granted_role"));
        QTRY_COMPARE(window.shownPages(), QStringList());
        const auto *empty = window.findChild<QLabel *>(QStringLiteral("emptyText"));
        QVERIFY(empty->isVisible());
        QVERIFY(empty->text().contains(AuthData::login()));
        QVERIFY(!window.findChild<QTabBar *>(QStringLiteral("pageTabs"))->isVisible());

        fixture.sql(QStringLiteral("INSERT INTO granted_role (role) VALUES ('RL_SCHEDULE_SHOW')"));
        QTRY_COMPARE(window.shownPages(), QStringList{"base"});
        QVERIFY(basePage->isVisible() && !empty->isVisible());
        QCOMPARE(changed.count(), 4);
    }

    void shouldUseTheRightsOfAReplacedStoreFile()
    {
        const StoreFixture fixture;
        StoreFixture other;
        other.sql(QStringLiteral("DELETE FROM granted_role WHERE role = 'RL_SCHEDULE_UPDATE'"));
        other.database.close();
        auto wanted = options({"a_dependent", "b_base"});
        wanted.store = fixture.address();
        Client client(wanted);
        start(client);
        QCOMPARE(client.window().shownPages(), QStringList({"base", "dependent"}));
        const QSignalSpy changed(AuthData::instance(), &AuthData::rolesChanged);
        QVERIFY(QFile::rename(fixture.path(), fixture.path() + QStringLiteral(".kept")));
        QVERIFY(QFile::copy(other.path(), fixture.path()));
        QTRY_COMPARE(client.window().shownPages(), QStringList{"base"});
        QTRY_VERIFY(client.server().isConnected());
        QCOMPARE(changed.count(), 1);
    }

    void shouldShowThePageOfAHostCommand()
    {
        auto wanted = options({"a_dependent", "b_base"});
        wanted.showName = QStringLiteral("dependent");
        wanted.showId = 17;
        Client client(wanted);
        start(client);
        auto *page = client.window().findChild<QWidget *>(QStringLiteral("dependentPage"));
        QTRY_VERIFY(qApp->property("calls").toStringList().contains(QStringLiteral("dependent.show 17")));
        QVERIFY(page->isVisible());

        Command unknown({HostCommandKind, QStringLiteral("show:nobody")});
        QSignalSpy arrived(&client.server(), &TQServerInterface::commandArrived);
        int result = 0;
        client.server().sendQuery(unknown, this, [&result](const Command &reply) { result = reply.result(); });
        QTRY_COMPARE(result, int(ResultNotFound));
        QVERIFY(page->isVisible());
    }

    void shouldRestorePageTabAndWindowSize()
    {
        const auto wanted = options({"a_dependent", "b_base"});
        QSize size;
        {
            Client client(wanted);
            start(client);
            client.window().resize(1000, 650);
            QVERIFY(client.window().showPage(QStringLiteral("dependent")));
            client.window().showTab(0);
            size = client.window().size();
            client.window().close();
        }
        takeCalls();
        Client client(options({"a_dependent", "b_base"}));
        start(client);
        QCOMPARE(client.window().size(), size);
        QVERIFY(client.window().findChild<QWidget *>(QStringLiteral("dependentPage"))->isVisible());
        QCOMPARE(client.window().findChild<QTabBar *>(QStringLiteral("pageTabs"))->currentIndex(), 0);
        const QStringList calls = takeCalls();
        QVERIFY(calls.contains(QStringLiteral("dependent.tab 0")));
        QVERIFY(!calls.contains(QStringLiteral("dependent.tab 1")));
    }

    void shouldCreateAMissingStoreFromTheFailurePage()
    {
        auto wanted = options({"b_base"});
        wanted.store = store::StoreAddress::file(m_folder.filePath(QStringLiteral("new/fresh.db")));
        Client client(wanted);
        QSignalSpy failed(&client, &Client::openingFailed);
        QSignalSpy ready(&client, &Client::ready);
        client.start();
        QVERIFY(failed.wait());
        auto *text = client.window().findChild<QLabel *>(QStringLiteral("failureText"));
        auto *create = client.window().findChild<QPushButton *>(QStringLiteral("createButton"));
        QVERIFY(text->isVisible() && !text->text().isEmpty());
        QVERIFY(create->isVisible());
        QCOMPARE(client.window().shownPages(), QStringList());
        QTest::mouseClick(create, Qt::LeftButton);
        QVERIFY(ready.wait());
        QVERIFY(client.window().findChild<QWidget *>(QStringLiteral("basePage"))->isVisible());
    }

    void shouldReportAFileThatIsNoStoreAndRetry()
    {
        auto wanted = options({"b_base"});
        wanted.store = store::StoreAddress::file(m_folder.filePath(QStringLiteral("letter.db")));
        QFile letter(wanted.store.filePath());
        QVERIFY(letter.open(QIODevice::WriteOnly));
        letter.write("Dear Sir or Madam, this is no store.");
        letter.close();
        Client client(wanted);
        QSignalSpy failed(&client, &Client::openingFailed);
        client.start();
        QVERIFY(failed.wait());
        QVERIFY(!client.window().findChild<QPushButton *>(QStringLiteral("createButton"))->isVisible());

        auto *retry = client.window().findChild<QPushButton *>(QStringLiteral("retryButton"));
        QTest::mouseClick(retry, Qt::LeftButton);
        QVERIFY(failed.wait());

        QVERIFY(QFile::remove(wanted.store.filePath()));
        QVERIFY(QFile::copy(m_store.filePath(), wanted.store.filePath()));
        QSignalSpy ready(&client, &Client::ready);
        QTest::mouseClick(retry, Qt::LeftButton);
        QVERIFY(ready.wait());
        QVERIFY(client.window().findChild<QWidget *>(QStringLiteral("basePage"))->isVisible());
    }

    void shouldNotConfirmADialogWithAHeldKey()
    {
        const Client client(options({"b_base"}));
        QDialog dialog;
        auto *edit = new QLineEdit(&dialog);
        auto *button = new QPushButton(&dialog);
        button->setDefault(true);
        dialog.show();
        const QSignalSpy clicked(button, &QPushButton::clicked);
        for (QWidget *focused : {static_cast<QWidget *>(edit), static_cast<QWidget *>(button)}) {
            QKeyEvent held(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, QStringLiteral("\r"), true);
            QCoreApplication::sendEvent(focused, &held);
        }
        // Without the repeat flag, X11 reports a held key as a release and a press with the same timestamp.
        for (const auto type : {QEvent::KeyRelease, QEvent::KeyPress}) {
            QKeyEvent held(type, Qt::Key_Return, Qt::NoModifier, QStringLiteral("\r"));
            held.setTimestamp(7);
            QCoreApplication::sendEvent(edit, &held);
        }
        QCOMPARE(clicked.count(), 0);
        QTest::keyClick(edit, Qt::Key_Return);
        QCOMPARE(clicked.count(), 1);
    }

    void shouldReportALostConnectionUntilItIsRestored()
    {
        auto wanted = options({"b_base"});
        const QString path = m_folder.filePath(QStringLiteral("moving.db"));
        wanted.store = store::StoreAddress::file(path);
        QVERIFY(store::Database::create(wanted.store).ok());
        Client client(wanted);
        start(client);
        auto *text = client.window().findChild<QLabel *>(QStringLiteral("connectionText"));
        const QString connected = text->text();
        QVERIFY(QFile::rename(path, path + QStringLiteral(".away")));
        QTRY_VERIFY(!client.server().isConnected());
        QVERIFY(text->text() != connected);
        auto *state = client.window().findChild<QWidget *>(QStringLiteral("connectionState"));
        QTRY_VERIFY(state->toolTip().contains(QStringLiteral("Файла хранилища %1 нет.").arg(path)));
        QCOMPARE(client.window().popups()->count(), 1);
        QVERIFY(client.window().findChild<QWidget *>(QStringLiteral("basePage"))->isVisible());
        QVERIFY(QFile::rename(path + QStringLiteral(".away"), path));
        QTRY_VERIFY(client.server().isConnected());
        QCOMPARE(text->text(), connected);
        QCOMPARE(state->toolTip(), path);
        QCOMPARE(client.window().popups()->count(), 0);
    }

    void shouldTakeAPictureOfEveryTabInBothThemes()
    {
        Client client(options({"a_dependent", "b_base"}));
        start(client);
        const QString folder = m_folder.filePath(QStringLiteral("pictures/new"));
        PictureTaker taker(client.window(), folder);
        QSignalSpy finished(&taker, &PictureTaker::finished);
        taker.start();
        QDialog dialog(&client.window());
        dialog.setObjectName(QStringLiteral("openDialog"));
        dialog.exec();
        QVERIFY(finished.wait(20000));
        QCOMPARE(finished.first().first().toString(), QString());

        const QStringList files = QDir(folder).entryList({QStringLiteral("*.png")}, QDir::Files, QDir::Name);
        QCOMPARE(files,
                 QStringList({"base-1-dark.png", "base-1-light.png", "base-2-dark.png", "base-2-light.png",
                              "dependent-1-dark.png", "dependent-1-light.png", "dependent-2-dark.png",
                              "dependent-2-light.png", "openDialog-light.png"}));
        const auto background = [&folder](const QString &file) {
            return QImage(folder + QLatin1Char('/') + file).pixelColor(5, 300).lightness();
        };
        QVERIFY(background(QStringLiteral("base-1-light.png")) > 200);
        QVERIFY(background(QStringLiteral("base-1-dark.png")) < 60);

        // The folder is a file.
        PictureTaker impossible(client.window(), folder + QStringLiteral("/base-1-dark.png"));
        QSignalSpy failed(&impossible, &PictureTaker::finished);
        impossible.start();
        QCOMPARE(failed.count(), 1);
        QVERIFY(!failed.first().first().toString().isEmpty());
    }

    void shouldStackPopupsWithoutTakingTheFocus()
    {
        PopupPage page;
        page.show();
        QVERIFY(QTest::qWaitForWindowActive(&page));
        page.edit->setFocus();
        page.popups->add(QStringLiteral("Ошибка обновления графика работ"), 0);
        page.popups->add(QStringLiteral("Ошибка удаления графика работ"), 0);
        QTest::keyClicks(page.focusWidget(), QStringLiteral("still typing"));
        QCOMPARE(page.edit->text(), QStringLiteral("still typing"));

        const auto popups = shownPopups(page);
        QCOMPARE(popups.size(), 2);
        QVERIFY(popups.first()->geometry().bottom() < popups.last()->geometry().top());
        QVERIFY(page.edit->rect().contains(popups.first()->geometry()));

        QTest::mouseClick(popups.last()->findChild<QToolButton *>(QStringLiteral("popupClose")), Qt::LeftButton);
        QVERIFY(page.edit->hasFocus());
        QCOMPARE(shownPopups(page), QList<Popup *>{popups.first()});
        QVERIFY(popups.first()->geometry().bottom() > page.edit->height() - 20);

        page.popups->add(QStringLiteral("closes by itself"), 50);
        QCOMPARE(page.popups->count(), 2);
        QTRY_COMPARE(shownPopups(page), QList<Popup *>{popups.first()});
    }

    void shouldKeepEveryPopupInsideTheWindow()
    {
        PopupPage page;
        page.resize(640, 400);
        page.show();
        QVERIFY(QTest::qWaitForWindowActive(&page));
        const QString longText = QStringLiteral("Сервер не смог сохранить запись. ").repeated(100);
        page.popups->add(longText, 0);
        for (int i = 0; i < 12; ++i)
            page.popups->add(QStringLiteral("Ошибка номер %1").arg(i), 0);
        const auto popups = shownPopups(page);
        QVERIFY(popups.size() > 1);
        for (const auto *popup : popups)
            QVERIFY(page.edit->rect().contains(popup->geometry()));
        QCOMPARE(page.popups->count(), 13);

        // Hidden pop-ups appear when others are closed.
        for (int i = 0; i < 12; ++i) {
            auto *newest = shownPopups(page).constLast();
            QTest::mouseClick(newest->findChild<QToolButton *>(QStringLiteral("popupClose")), Qt::LeftButton);
        }
        QCOMPARE(shownPopups(page).size(), 1);
        auto *last = shownPopups(page).constFirst();
        QCOMPARE(last->text(), longText);
        QVERIFY(page.edit->rect().contains(last->geometry()));

        page.popups->add(QStringLiteral("a"), 0);
        page.popups->add(QStringLiteral("b"), 0);
        QTest::mouseClick(page.findChild<QToolButton *>(QStringLiteral("popupCloseAll")), Qt::LeftButton);
        QCOMPARE(page.popups->count(), 0);
        QVERIFY(shownPopups(page).isEmpty());
    }

    void shouldAddTheReasonToThePopupOfItsReply()
    {
        Client client(options({"b_base"}));
        start(client);
        auto *page = client.window().findChild<PluginWidget *>(QStringLiteral("basePage"));
        page->showPopupCriticalMessage(QStringLiteral("older"), 0);

        // The store refuses the request with an advice. The sender shows no pop-up at first, then it shows one.
        Command request({StoreRequestKind, request::UpdateSchedule});
        orvex::SCHEDULE_DATA unknown;
        unknown.id = 4242;
        unknown.name = QStringLiteral("x");
        request.setPayload(writePayload(unknown));
        QString text;
        QString advice;
        bool answered = false;
        const auto send = [&](bool showsPopup) {
            answered = false;
            client.server().sendQuery(request, this, [&, showsPopup](const Command &reply) {
                QVERIFY(!reply.isSuccess());
                QVERIFY(readPayload(reply.payload(), text, advice));
                if (showsPopup)
                    page->showPopupCriticalMessage(QStringLiteral("failed"), 0);
                answered = true;
            });
        };
        send(false);
        QTRY_VERIFY(answered);
        QVERIFY(!advice.isEmpty());
        QCOMPARE(client.window().popups()->count(), 1);
        QCOMPARE(shownPopups(client.window()).constFirst()->text(), QStringLiteral("older"));
        send(true);
        QTRY_VERIFY(answered);
        QCOMPARE(shownPopups(client.window()).constLast()->text(), QStringLiteral("failed\n\n%1 %2").arg(text, advice));
        QCOMPARE(shownPopups(client.window()).constFirst()->text(), QStringLiteral("older"));
    }

private:
    [[nodiscard]] QString pluginFolder(const QStringList &files)
    {
        // A new folder for each client: a library is loaded again only from another path.
        const QString folder = m_folder.filePath(QStringLiteral("plugins%1").arg(++m_pluginFolders));
        QDir().mkpath(folder);
        for (const QString &file : files)
            QFile::copy(QStringLiteral(TEST_PLUGINS "/") + file + QStringLiteral(".so"),
                        folder + QLatin1Char('/') + file + QStringLiteral(".so"));
        return folder;
    }

    [[nodiscard]] Options options(const QStringList &plugins)
    {
        Options options;
        options.store = m_store;
        options.plugins = pluginFolder(plugins);
        return options;
    }

    void start(Client &client)
    {
        QSignalSpy ready(&client, &Client::ready);
        client.start();
        QVERIFY(client.window().findChild<QLabel *>(QStringLiteral("waitText"))->isVisible());
        QVERIFY(ready.wait());
        QVERIFY(QTest::qWaitForWindowActive(&client.window()));
    }

    QTemporaryDir m_folder;
    store::StoreAddress m_store;
    int m_pluginFolders = 0;
};

QTEST_MAIN(TestClient)
#include "tst_client.moc"
