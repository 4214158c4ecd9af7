#pragma once

#include "client.h"
#include "storefixture.h"
#include "tqstyles.h"

#include <QAction>
#include <QApplication>
#include <QContextMenuEvent>
#include <QDialog>
#include <QMenu>
#include <QPointer>
#include <QSettings>
#include <QSignalSpy>
#include <QTableView>
#include <QTimer>
#include <QToolButton>

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

/// Presses Tab until the widget of that name has the focus.
inline void tabTo(const QString &name)
{
    for (int i = 0; i < 40 && focus()->objectName() != name; ++i)
        press(Qt::Key_Tab);
    QCOMPARE(focus()->objectName(), name);
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

inline void clickDay(QTableView &grid, const QDate &date, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
{
    grid.scrollTo(cell(grid, date));
    QTest::mouseClick(grid.viewport(), Qt::LeftButton, modifiers, grid.visualRect(cell(grid, date)).center());
}

/// Goes to a day with the arrow keys.
inline void goToDay(const QTableView &grid, const QDate &date)
{
    const QModelIndex to = cell(grid, date);
    press(Qt::Key_Down);
    for (int i = 0; i < 40 && grid.currentIndex().row() != to.row(); ++i)
        press(grid.currentIndex().row() < to.row() ? Qt::Key_Down : Qt::Key_Up);
    for (int i = 0; i < 40 && grid.currentIndex().column() != to.column(); ++i)
        press(grid.currentIndex().column() < to.column() ? Qt::Key_Right : Qt::Key_Left);
    QCOMPARE(grid.currentIndex(), to);
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

/// The running client with the page of the schedules, on a store of its own.
class ClientFixture
{
public:
    /// \a plugins is the folder with the page.
    explicit ClientFixture(const QString &plugins)
    {
        QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, m_settings.path());
        QLocale::setDefault(QLocale(QLocale::Russian, QLocale::Russia));
        tqstyles::install();
        Options options;
        options.store = store.address();
        options.plugins = plugins;
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

    StoreFixture store;

private:
    QTemporaryDir m_settings;
    std::unique_ptr<Client> m_client;
};
