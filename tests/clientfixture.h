#pragma once

#include "client.h"
#include "storefixture.h"
#include "tqstyles.h"

#include <QAction>
#include <QApplication>
#include <QContextMenuEvent>
#include <QDialog>
#include <QDialogButtonBox>
#include <QLineEdit>
#include <QMenu>
#include <QPointer>
#include <QPushButton>
#include <QSettings>
#include <QSignalSpy>
#include <QTableView>
#include <QTimer>
#include <QToolButton>
#include <QWizard>

#include <algorithm>
#include <functional>
#include <memory>

// What a day's cell of a calendar tells besides its text.
constexpr int CalendarShiftRole = Qt::UserRole + 1;
constexpr int CalendarDateRole = Qt::UserRole + 2;

/// The hands of an operator: mouse and keyboard on whatever the client shows.
namespace hand {

/// What a window manager does with a new window.
inline void activate(QWidget &window)
{
    QApplication::setActiveWindow(&window);
    QVERIFY(QTest::qWaitForWindowActive(&window));
}

/// Where keys go.
inline QWidget *focus()
{
    auto *widget = QApplication::focusWidget();
    return widget ? widget : QApplication::activeWindow();
}

/// Types any text: `QTest::keyClicks` knows Latin letters only.
inline void type(const QString &text)
{
    for (const QChar letter : text)
        QTest::sendKeyEvent(QTest::Click, focus(), Qt::Key_unknown, letter, Qt::NoModifier);
}

inline void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
{
    QTest::keyClick(focus(), key, modifiers);
}

inline void clickAction(const QWidget &window, const QString &name)
{
    const auto buttons = window.findChildren<QToolButton *>();
    const auto *action = window.findChild<QAction *>(name);
    const auto button = std::find_if(buttons.cbegin(), buttons.cend(),
                                     [action](const auto *button) { return button->defaultAction() == action; });
    QVERIFY(button != buttons.cend());
    QTRY_VERIFY((*button)->isVisible() && (*button)->isEnabled());
    QTest::mouseClick(*button, Qt::LeftButton);
}

inline QModelIndex cell(const QTableView &grid, const QDate &date)
{
    const auto *model = grid.model();
    for (int row = 0; row < model->rowCount(); ++row) {
        for (int column = 1; column < model->columnCount(); ++column) {
            if (model->index(row, column).data(CalendarDateRole).toDate() == date)
                return model->index(row, column);
        }
    }
    return {};
}

inline QMenu *menu()
{
    return qobject_cast<QMenu *>(QApplication::activePopupWidget());
}

inline QAction *entry(const QMenu *menu, const QString &text)
{
    for (QAction *action : menu->actions()) {
        if (action->text() == text)
            return action;
    }
    return nullptr;
}

inline void clickMenu(QTableView &grid, const QString &group, const QString &text)
{
    const QPoint pos = grid.visualRect(grid.currentIndex()).center();
    QContextMenuEvent event(QContextMenuEvent::Mouse, pos, grid.viewport()->mapToGlobal(pos));
    QApplication::sendEvent(grid.viewport(), &event);
    QVERIFY(menu());
    QAction *submenu = entry(menu(), group);
    QTest::mouseClick(menu(), Qt::LeftButton, {}, menu()->actionGeometry(submenu).center());
    QTRY_VERIFY(submenu->menu()->isVisible());
    auto *action = entry(submenu->menu(), text);
    QVERIFY(action);
    QTest::mouseClick(submenu->menu(), Qt::LeftButton, {}, submenu->menu()->actionGeometry(action).center());
    QTRY_VERIFY(!menu());
}

inline void keyMenu(const QString &group, const QString &text)
{
    press(Qt::Key_F10, Qt::ShiftModifier);
    for (const QString &wanted : {group, text}) {
        auto *opened = menu();
        QVERIFY(opened);
        for (int i = 0; i < 10 && !(opened->activeAction() && opened->activeAction()->text() == wanted); ++i)
            QTest::keyClick(opened, Qt::Key_Down);
        QVERIFY(opened->activeAction());
        QCOMPARE(opened->activeAction()->text(), wanted);
        QTest::keyClick(opened, wanted == group ? Qt::Key_Right : Qt::Key_Return);
    }
    QTRY_VERIFY(!menu());
}

/// Runs the steps in the dialog that opens next, and closes it if they have not.
inline void whenOpen(const std::function<void(QDialog &)> &steps)
{
    auto *timer = new QTimer(qApp);
    QObject::connect(timer, &QTimer::timeout, timer, [timer, steps] {
        const QPointer<QDialog> dialog = qobject_cast<QDialog *>(QApplication::activeModalWidget());
        if (!dialog)
            return;
        timer->stop();
        activate(*dialog);
        steps(*dialog);
        timer->deleteLater();
        if (dialog && dialog->isVisible())
            dialog->reject();
    });
    timer->start(10);
}

} // namespace hand

/// Sits at the client with a mouse or with a keyboard, never with both, and works in the window in front.
class Person
{
public:
    explicit Person(bool mouse)
        : m_mouse(mouse)
    {
    }

    /// The rows of a test that is done with either device.
    static void addDevices()
    {
        QTest::addColumn<bool>("mouse");
        QTest::newRow("mouse") << true;
        QTest::newRow("keyboard") << false;
    }

    template <class T = QWidget> T *see(const char *name) const
    {
        for (auto *widget : QApplication::activeWindow()->findChildren<T *>(QLatin1String(name))) {
            if (widget->isVisible())
                return widget;
        }
        qFatal("Nobody can see %s", name);
    }

    /// Brings the focus to a widget, as far as it takes.
    void reach(QWidget *wanted) const
    {
        if (m_mouse) {
            QTest::mouseClick(wanted, Qt::LeftButton, {}, QPoint(8, wanted->height() / 2));
            return;
        }
        for (int i = 0; i < 40 && hand::focus() != wanted; ++i)
            hand::press(Qt::Key_Tab);
        if (hand::focus() != wanted)
            qFatal("No key leads to %s", qPrintable(wanted->objectName()));
    }

    void push(QWidget *button) const
    {
        reach(button);
        if (!m_mouse)
            hand::press(Qt::Key_Space);
    }
    void push(const char *name) const { push(see(name)); }

    /// An action of the list, by its button or by its key.
    void order(const char *action, Qt::Key key) const
    {
        if (m_mouse) {
            hand::clickAction(*QApplication::activeWindow(), QLatin1String(action));
            return;
        }
        reach(see("scheduleView"));
        hand::press(key);
    }

    void type(const char *name, const QString &text) const
    {
        reach(see(name));
        hand::press(Qt::Key_A, Qt::ControlModifier);
        QTest::keyClicks(hand::focus(), text);
    }

    /// Into the hours, and on into the minutes.
    void typeTime(const char *name, const QString &digits) const
    {
        reach(see(name));
        auto *hours = see(name)->findChild<QLineEdit *>();
        if (m_mouse)
            QTest::mouseDClick(hours, Qt::LeftButton, {}, QPoint(8, hours->height() / 2));
        QTest::keyClicks(hand::focus(), digits);
    }

    /// To the next page of a wizard, or out of it.
    void goOn() const
    {
        const auto *wizard = qobject_cast<QWizard *>(QApplication::activeWindow());
        if (m_mouse)
            reach(wizard->button(wizard->nextId() < 0 ? QWizard::FinishButton : QWizard::NextButton));
        else
            hand::press(Qt::Key_Return);
    }

    /// Confirms the dialog; fails the test when it stays.
    void accept() const
    {
        const QPointer<QWidget> dialog = QApplication::activeWindow();
        if (m_mouse)
            reach(dialog->findChild<QDialogButtonBox *>()->button(QDialogButtonBox::Ok));
        else
            hand::press(Qt::Key_Return);
        QVERIFY(!dialog || !dialog->isVisible());
    }

    /// Makes a cell of a table the current one.
    void goTo(const char *table, int row, int column) const
    {
        auto *view = see<QTableView>(table);
        const QModelIndex wanted = view->model()->index(row, column);
        view->scrollTo(wanted);
        if (m_mouse) {
            QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, view->visualRect(wanted).center());
            return;
        }
        reach(view);
        for (int i = 0; i < 40 && view->currentIndex().row() != row; ++i)
            hand::press(view->currentIndex().row() < row ? Qt::Key_Down : Qt::Key_Up);
        for (int i = 0; i < 40 && view->currentIndex().column() != column; ++i)
            hand::press(view->currentIndex().column() < column ? Qt::Key_Right : Qt::Key_Left);
        QCOMPARE(view->currentIndex(), wanted);
    }

    /// Begins to edit a cell, or to do what else stands behind it.
    void open(const char *table, int row, int column, Qt::Key key = Qt::Key_F2) const
    {
        goTo(table, row, column);
        auto *view = see<QTableView>(table);
        if (m_mouse)
            QTest::mouseDClick(view->viewport(), Qt::LeftButton, {}, view->visualRect(view->currentIndex()).center());
        else
            hand::press(key);
    }

    void tick(const char *table, int row, int column) const
    {
        goTo(table, row, column);
        if (!m_mouse)
            hand::press(Qt::Key_Space);
    }

    /// Selects \a count days of one row of a calendar and picks an entry from their menu.
    void mark(const QDate &first, int count, const QString &group, const QString &text) const
    {
        auto *days = see<QTableView>("calendarView");
        const QModelIndex from = hand::cell(*days, first);
        goTo("calendarView", from.row(), from.column());
        const QRect last = days->visualRect(hand::cell(*days, first.addDays(count - 1)));
        if (m_mouse && count > 1)
            QTest::mouseClick(days->viewport(), Qt::LeftButton, Qt::ShiftModifier, last.center());
        for (int i = 1; !m_mouse && i < count; ++i)
            hand::press(Qt::Key_Right, Qt::ShiftModifier);
        QCOMPARE(days->selectionModel()->selectedIndexes().size(), count);
        if (m_mouse)
            hand::clickMenu(*days, group, text);
        else
            hand::keyMenu(group, text);
    }

private:
    bool m_mouse;
};

/// The running client with the page of the schedules, on a store of its own.
class ClientFixture
{
public:
    ClientFixture()
    {
        QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, m_settings.path());
        QLocale::setDefault(QLocale(QLocale::Russian, QLocale::Russia));
        tqstyles::install();
        Options options;
        options.store = store.address();
        options.plugins = QStringLiteral(PLUGIN_FOLDER);
        m_client = std::make_unique<Client>(options);
        QSignalSpy ready(m_client.get(), &Client::ready);
        m_client->start();
        if (!ready.wait() || !QTest::qWaitForWindowActive(&window()))
            qFatal("The client has not come up");
        window().resize(1280, 720);
    }

    [[nodiscard]] Client &client() const { return *m_client; }
    [[nodiscard]] QWidget &window() const { return m_client->window(); }
    [[nodiscard]] QTableView *table() const { return window().findChild<QTableView *>(QStringLiteral("scheduleView")); }

    /// Opens the editor of a schedule of the list and takes the steps there.
    void edit(const Person &person, const std::function<void(QDialog &)> &steps, int row = 0) const
    {
        bool opened = false;
        hand::whenOpen([&](QDialog &editor) {
            opened = true;
            steps(editor);
        });
        hand::activate(window());
        person.open("scheduleView", row, 0, Qt::Key_Return);
        QTRY_VERIFY(opened);
    }

    StoreFixture store;

private:
    QTemporaryDir m_settings;
    std::unique_ptr<Client> m_client;
};
