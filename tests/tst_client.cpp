#include "authdata.h"
#include "client.h"
#include "database.h"
#include "hands.h"
#include "picturetaker.h"
#include "popupstack.h"
#include "storefixture.h"

#include <QDialog>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTabBar>
#include <QToolButton>
#include <QtTest>

#include <algorithm>

using namespace support;

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

void closePopup(const Popup *popup)
{
    QTest::mouseClick(findWidget<QToolButton>(*popup, "popupClose"), Qt::LeftButton);
}

void writeFile(const QString &path, const QByteArray &data)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(data);
}

/// A page with pop-ups.
class PopupPage : public QMainWindow
{
public:
    PopupPage()
    {
        setCentralWidget(edit);
        resize(640, 400);
        show();
        support::activateWindow(this);
        edit->setFocus();
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
        QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, m_folder.filePath("settings"));
        m_store = store::StoreAddress::file(m_folder.filePath("test.db"));
        const auto created = store::Database::create(m_store);
        QVERIFY2(created.ok(), qPrintable(created.message()));
        tqstyles::install();
    }

    void init() { takeCalls(); }

    void shouldCallPluginsInOrder()
    {
        {
            const auto client = start(options({"a_dependent", "b_base"}));
            QCOMPARE(takeCalls(),
                     QStringList({"base.init", "base.inserted", "base.tabs", "base.tab 1", "base.ready",
                                  "dependent.init", "dependent.inserted", "dependent.tabs", "dependent.tab 1",
                                  "dependent.ready", "base.activated"}));
            QVERIFY(!AuthData::sessionId().isEmpty());
            QVERIFY(!AuthData::login().isEmpty());
            QVERIFY(findWidget<QLabel>(client->window(), "loginText")->text().contains(AuthData::login()));
            QVERIFY(findWidget<QLabel>(client->window(), "connectionText")->text().contains("test.db"));
        }
        QCOMPARE(takeCalls(), QStringList({"dependent.uninit", "base.uninit"}));
        QCOMPARE(AuthData::sessionId(), QString());
    }

    void shouldReportEachPluginThatFails()
    {
        auto wanted = options({"b_base", "c_throws_at_start", "d_throws_in_window", "e_orphan", "f_follower"});
        writeFile(wanted.plugins + "/g_broken.so", "not a library");
        QVERIFY(QFile::copy(wanted.plugins + "/b_base.so", wanted.plugins + "/h_twin.so"));
        writeFile(wanted.plugins + "/readme.txt", {});

        const auto client = start(wanted);
        QCOMPARE(client->window().shownPages(), QStringList{"base"});
        auto *text = findWidget<QLabel>(client->window(), "noticeText");
        QVERIFY(text->isVisible());
        const QStringList lines = text->text().split('\n');
        QCOMPARE(lines.size(), 6);
        const QList<QPair<QString, QString>> failures{{"c_throws_at_start.so", "no licence"},
                                                      {"d_throws_in_window.so", "неизвестной ошибке"},
                                                      {"e_orphan.so", "nobody"},
                                                      {"f_follower.so", "windowthrower"},
                                                      {"g_broken.so", "повреждён"},
                                                      {"h_twin.so", "уже загружен"}};
        for (const auto &[file, reason] : failures)
            QCOMPARE(lines.filter(file).filter(reason).size(), 1);
        QVERIFY(!takeCalls().contains("follower.init"));

        QTest::mouseClick(findWidget<QToolButton>(client->window(), "noticeClose"), Qt::LeftButton);
        QVERIFY(!text->isVisible());
    }

    void shouldSwitchTabsAndPagesByMouseAndKeyboard()
    {
        const auto client = start(options({"a_dependent", "b_base"}));
        takeCalls();
        auto *tabs = findWidget<QTabBar>(client->window(), "pageTabs");
        auto *list = findWidget<QListWidget>(client->window(), "pageList");
        QCOMPARE(tabs->count(), 2);
        QVERIFY(qobject_cast<QLineEdit *>(client->window().focusWidget()));
        QTest::mouseClick(tabs, Qt::LeftButton, {}, tabs->tabRect(0).center());
        QTest::keyClick(&client->window(), Qt::Key_Tab, Qt::ControlModifier);
        QCOMPARE(takeCalls(), QStringList({"base.tab 0", "base.tab 1"}));

        list->setFocus();
        QTest::keyClick(list, Qt::Key_Down);
        QCOMPARE(takeCalls(), QStringList{"dependent.activated"});
        QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualItemRect(list->item(0)).center());
        QCOMPARE(takeCalls(), QStringList{"base.activated"});
        QTest::keyClick(list, Qt::Key_Return);
        QVERIFY(qobject_cast<QLineEdit *>(client->window().focusWidget()));
    }

    void shouldReportChangedRolesOnce()
    {
        const QSignalSpy changed(AuthData::instance(), &AuthData::rolesChanged);
        for (const char *roles : {"show create", "create show", "create"})
            AuthData::setRoles(QString(roles).split(' '));
        QCOMPARE(changed.count(), 2);
        AuthData::signOut();
        AuthData::signOut();
        QCOMPARE(changed.count(), 3);
        QCOMPARE(AuthData::roles(), QStringList());
    }

    void shouldShowAndHidePagesWhenRightsChange()
    {
        const StoreFixture fixture;
        fixture.sql("DELETE FROM granted_role WHERE role = 'RL_SCHEDULE_SHOW'");
        auto wanted = options({"a_dependent", "b_base"});
        wanted.store = fixture.address();
        QStringList rolesAtSignal;
        const auto client = start(wanted);
        const auto &window = client->window();
        const auto *basePage = findWidget<QWidget>(window, "basePage");
        const auto *dependentPage = findWidget<QWidget>(window, "dependentPage");
        QCOMPARE(window.shownPages(), QStringList{"dependent"});
        QVERIFY(!client->window().showPage("base"));
        const QSignalSpy changed(AuthData::instance(), &AuthData::rolesChanged);
        connect(AuthData::instance(), &AuthData::rolesChanged, client.get(), [&rolesAtSignal] {
            QCOMPARE(QThread::currentThread(), qApp->thread());
            rolesAtSignal = AuthData::roles();
        });

        fixture.sql("INSERT INTO granted_role (role) VALUES ('RL_SCHEDULE_SHOW')");
        QTRY_COMPARE(window.shownPages(), QStringList({"base", "dependent"}));
        QVERIFY(dependentPage->isVisible());
        QVERIFY(rolesAtSignal.contains("RL_SCHEDULE_SHOW"));

        fixture.sql("DELETE FROM granted_role WHERE role = 'RL_SCHEDULE_UPDATE'");
        QTRY_COMPARE(window.shownPages(), QStringList{"base"});
        QVERIFY(basePage->isVisible() && !dependentPage->isVisible());
        QVERIFY(!client->window().showPage("dependent"));

        fixture.sql("DELETE FROM granted_role");
        QTRY_COMPARE(window.shownPages(), QStringList());
        const auto *empty = findWidget<QLabel>(window, "emptyText");
        QVERIFY(empty->isVisible());
        QVERIFY(empty->text().contains(AuthData::login()));
        QVERIFY(!findWidget<QTabBar>(window, "pageTabs")->isVisible());

        fixture.sql("INSERT INTO granted_role (role) VALUES ('RL_SCHEDULE_SHOW')");
        QTRY_COMPARE(window.shownPages(), QStringList{"base"});
        QVERIFY(basePage->isVisible() && !empty->isVisible());
        QCOMPARE(changed.count(), 4);
    }

    void shouldUseTheRightsOfAReplacedStoreFile()
    {
        const StoreFixture fixture;
        StoreFixture other;
        other.sql("DELETE FROM granted_role WHERE role = 'RL_SCHEDULE_UPDATE'");
        other.database.close();
        auto wanted = options({"a_dependent", "b_base"});
        wanted.store = fixture.address();
        const auto client = start(wanted);
        QCOMPARE(client->window().shownPages(), QStringList({"base", "dependent"}));
        const QSignalSpy changed(AuthData::instance(), &AuthData::rolesChanged);
        QVERIFY(QFile::rename(fixture.path(), fixture.path() + ".kept"));
        QVERIFY(QFile::copy(other.path(), fixture.path()));
        QTRY_COMPARE(client->window().shownPages(), QStringList{"base"});
        QTRY_VERIFY(client->server().isConnected());
        QCOMPARE(changed.count(), 1);
    }

    void shouldShowThePageOfAHostCommand()
    {
        auto wanted = options({"a_dependent", "b_base"});
        wanted.showName = "dependent";
        wanted.showId = 17;
        const auto client = start(wanted);
        auto *page = findWidget<QWidget>(client->window(), "dependentPage");
        QTRY_VERIFY(qApp->property("calls").toStringList().contains("dependent.show 17"));
        QVERIFY(page->isVisible());

        Command unknown({HostCommandKind, "show:nobody"});
        QSignalSpy arrived(&client->server(), &TQServerInterface::commandArrived);
        int result = 0;
        client->server().sendQuery(unknown, this, [&result](const Command &reply) { result = reply.result(); });
        QTRY_COMPARE(result, int(ResultNotFound));
        QVERIFY(page->isVisible());
    }

    void shouldRestorePageTabAndWindowSize()
    {
        const auto wanted = options({"a_dependent", "b_base"});
        QSize size;
        {
            const auto client = start(wanted);
            client->window().resize(1000, 650);
            QVERIFY(client->window().showPage("dependent"));
            client->window().showTab(0);
            size = client->window().size();
            client->window().close();
        }
        takeCalls();
        const auto client = start(options({"a_dependent", "b_base"}));
        QCOMPARE(client->window().size(), size);
        QVERIFY(findWidget<QWidget>(client->window(), "dependentPage")->isVisible());
        QCOMPARE(findWidget<QTabBar>(client->window(), "pageTabs")->currentIndex(), 0);
        const QStringList calls = takeCalls();
        QVERIFY(calls.contains("dependent.tab 0"));
        QVERIFY(!calls.contains("dependent.tab 1"));
    }

    void shouldCreateAMissingStoreFromTheFailurePage()
    {
        auto wanted = options({"b_base"});
        wanted.store = store::StoreAddress::file(m_folder.filePath("new/fresh.db"));
        Client client(wanted);
        QSignalSpy failed(&client, &Client::openingFailed);
        QSignalSpy ready(&client, &Client::ready);
        client.start();
        QVERIFY(failed.wait());
        auto *text = findWidget<QLabel>(client.window(), "failureText");
        auto *create = findWidget<QPushButton>(client.window(), "createButton");
        QVERIFY(text->isVisible() && !text->text().isEmpty());
        QVERIFY(create->isVisible());
        QCOMPARE(client.window().shownPages(), QStringList());
        QTest::mouseClick(create, Qt::LeftButton);
        QVERIFY(ready.wait());
        QVERIFY(findWidget<QWidget>(client.window(), "basePage")->isVisible());
    }

    void shouldReportAFileThatIsNoStoreAndRetry()
    {
        auto wanted = options({"b_base"});
        wanted.store = store::StoreAddress::file(m_folder.filePath("letter.db"));
        writeFile(wanted.store.filePath(), "Dear Sir or Madam, this is no store.");
        Client client(wanted);
        QSignalSpy failed(&client, &Client::openingFailed);
        client.start();
        QVERIFY(failed.wait());
        QVERIFY(!findWidget<QPushButton>(client.window(), "createButton")->isVisible());

        auto *retry = findWidget<QPushButton>(client.window(), "retryButton");
        QTest::mouseClick(retry, Qt::LeftButton);
        QVERIFY(failed.wait());

        QVERIFY(QFile::remove(wanted.store.filePath()));
        QVERIFY(QFile::copy(m_store.filePath(), wanted.store.filePath()));
        QSignalSpy ready(&client, &Client::ready);
        QTest::mouseClick(retry, Qt::LeftButton);
        QVERIFY(ready.wait());
        QVERIFY(findWidget<QWidget>(client.window(), "basePage")->isVisible());
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
            QKeyEvent held(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, "\r", true);
            QCoreApplication::sendEvent(focused, &held);
        }
        // Without the repeat flag, X11 reports a held key as a release and a press with the same timestamp.
        for (const auto type : {QEvent::KeyRelease, QEvent::KeyPress}) {
            QKeyEvent held(type, Qt::Key_Return, Qt::NoModifier, "\r");
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
        const QString path = m_folder.filePath("moving.db");
        wanted.store = store::StoreAddress::file(path);
        QVERIFY(store::Database::create(wanted.store).ok());
        const auto client = start(wanted);
        auto *text = findWidget<QLabel>(client->window(), "connectionText");
        const QString connected = text->text();
        QVERIFY(QFile::rename(path, path + ".away"));
        QTRY_VERIFY(!client->server().isConnected());
        QVERIFY(text->text() != connected);
        auto *state = findWidget<QWidget>(client->window(), "connectionState");
        QTRY_VERIFY(state->toolTip().contains(QStringLiteral("Файла хранилища %1 нет.").arg(path)));
        QCOMPARE(client->window().popups()->count(), 1);
        QVERIFY(findWidget<QWidget>(client->window(), "basePage")->isVisible());
        QVERIFY(QFile::rename(path + ".away", path));
        QTRY_VERIFY(client->server().isConnected());
        QCOMPARE(text->text(), connected);
        QCOMPARE(state->toolTip(), path);
        QCOMPARE(client->window().popups()->count(), 0);
    }

    void shouldTakeAPictureOfEveryTabInBothThemes()
    {
        const auto client = start(options({"a_dependent", "b_base"}));
        const QString folder = m_folder.filePath("pictures/new");
        PictureTaker taker(client->window(), folder);
        QSignalSpy finished(&taker, &PictureTaker::finished);
        taker.start();
        QDialog dialog(&client->window());
        dialog.setObjectName("openDialog");
        dialog.exec();
        QVERIFY(finished.wait(20000));
        QCOMPARE(finished.first().first().toString(), QString());

        const QStringList files = QDir(folder).entryList({"*.png"}, QDir::Files, QDir::Name);
        QCOMPARE(files,
                 QStringList({"base-1-dark.png", "base-1-light.png", "base-2-dark.png", "base-2-light.png",
                              "dependent-1-dark.png", "dependent-1-light.png", "dependent-2-dark.png",
                              "dependent-2-light.png", "openDialog-light.png"}));
        const auto background = [&folder](const QString &file) {
            return QImage(folder + QLatin1Char('/') + file).pixelColor(5, 300).lightness();
        };
        QVERIFY(background("base-1-light.png") > 200);
        QVERIFY(background("base-1-dark.png") < 60);

        // The folder is a file.
        PictureTaker impossible(client->window(), folder + "/base-1-dark.png");
        QSignalSpy failed(&impossible, &PictureTaker::finished);
        impossible.start();
        QCOMPARE(failed.count(), 1);
        QVERIFY(!failed.first().first().toString().isEmpty());
    }

    void shouldStackPopupsWithoutTakingTheFocus()
    {
        PopupPage page;
        page.popups->add("Ошибка обновления графика работ", 0);
        page.popups->add("Ошибка удаления графика работ", 0);
        QTest::keyClicks(page.focusWidget(), "still typing");
        QCOMPARE(page.edit->text(), "still typing");

        const auto popups = shownPopups(page);
        QCOMPARE(popups.size(), 2);
        QVERIFY(popups.first()->geometry().bottom() < popups.last()->geometry().top());
        QVERIFY(page.edit->rect().contains(popups.first()->geometry()));

        closePopup(popups.last());
        QVERIFY(page.edit->hasFocus());
        QCOMPARE(shownPopups(page), QList<Popup *>{popups.first()});
        QVERIFY(popups.first()->geometry().bottom() > page.edit->height() - 20);

        page.popups->add("closes by itself", 50);
        QCOMPARE(page.popups->count(), 2);
        QTRY_COMPARE(shownPopups(page), QList<Popup *>{popups.first()});
    }

    void shouldKeepEveryPopupInsideTheWindow()
    {
        PopupPage page;
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
        for (int i = 0; i < 12; ++i)
            closePopup(shownPopups(page).constLast());
        QCOMPARE(shownPopups(page).size(), 1);
        auto *last = shownPopups(page).constFirst();
        QCOMPARE(last->text(), longText);
        QVERIFY(page.edit->rect().contains(last->geometry()));

        page.popups->add("a", 0);
        page.popups->add("b", 0);
        QTest::mouseClick(findWidget<QToolButton>(page, "popupCloseAll"), Qt::LeftButton);
        QCOMPARE(page.popups->count(), 0);
        QVERIFY(shownPopups(page).isEmpty());
    }

    void shouldAddTheReasonToThePopupOfItsReply()
    {
        const auto client = start(options({"b_base"}));
        auto *page = findWidget<PluginWidget>(client->window(), "basePage");
        page->showPopupCriticalMessage("older", 0);

        // The store refuses the request and returns advice. The sender shows a pop-up for the second request only.
        Command request({StoreRequestKind, request::UpdateSchedule});
        orvex::SCHEDULE_DATA unknown;
        unknown.id = 4242;
        unknown.name = "x";
        request.setPayload(writePayload(unknown));
        QString text;
        QString advice;
        bool answered = false;
        const auto send = [&](bool showsPopup) {
            answered = false;
            client->server().sendQuery(request, this, [&, showsPopup](const Command &reply) {
                QVERIFY(!reply.isSuccess());
                QVERIFY(readPayload(reply.payload(), text, advice));
                if (showsPopup)
                    page->showPopupCriticalMessage("failed", 0);
                answered = true;
            });
        };
        send(false);
        QTRY_VERIFY(answered);
        QVERIFY(!advice.isEmpty());
        QCOMPARE(client->window().popups()->count(), 1);
        QCOMPARE(shownPopups(client->window()).constFirst()->text(), "older");
        send(true);
        QTRY_VERIFY(answered);
        QCOMPARE(shownPopups(client->window()).constLast()->text(),
                 QStringLiteral("failed\n\n%1 %2").arg(text, advice));
        QCOMPARE(shownPopups(client->window()).constFirst()->text(), "older");
    }

private:
    [[nodiscard]] QString pluginFolder(const QStringList &files)
    {
        // A new folder for each client: a library is loaded again only from another path.
        const QString folder = m_folder.filePath(QStringLiteral("plugins%1").arg(++m_pluginFolders));
        QDir().mkpath(folder);
        for (const QString &file : files)
            QFile::copy(QStringLiteral(TEST_PLUGINS "/") + file + ".so", folder + QLatin1Char('/') + file + ".so");
        return folder;
    }

    [[nodiscard]] Options options(const QStringList &plugins)
    {
        Options options;
        options.store = m_store;
        options.plugins = pluginFolder(plugins);
        return options;
    }

    [[nodiscard]] static std::unique_ptr<Client> start(const Options &options)
    {
        auto client = std::make_unique<Client>(options);
        QSignalSpy ready(client.get(), &Client::ready);
        client->start();
        const bool waits = findWidget<QLabel>(client->window(), "waitText")->isVisible();
        if (!waits || !ready.wait() || !QTest::qWaitForWindowActive(&client->window()))
            qFatal("The client does not start");
        return client;
    }

    QTemporaryDir m_folder;
    store::StoreAddress m_store;
    int m_pluginFolders = 0;
};

QTEST_MAIN(TestClient)
#include "tst_client.moc"
