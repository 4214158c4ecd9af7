#include "hands.h"

#include <QAction>
#include <QApplication>
#include <QContextMenuEvent>
#include <QMenu>
#include <QTabBar>
#include <QToolButton>
#include <QtTest>

#include <algorithm>

namespace support {

void activateWindow(QWidget *window)
{
    QApplication::setActiveWindow(window);
    QVERIFY(QTest::qWaitForWindowActive(window));
}

QWidget *focusWidget()
{
    auto *widget = QApplication::focusWidget();
    return widget ? widget : QApplication::activeWindow();
}

void pressKey(Qt::Key key, Qt::KeyboardModifiers modifiers)
{
    QTest::keyClick(focusWidget(), key, modifiers);
}

void typeText(QWidget *widget, const QString &text)
{
    for (const QChar letter : text)
        QTest::sendKeyEvent(QTest::Click, widget, Qt::Key_unknown, letter, Qt::NoModifier);
}

void clickWidget(QWidget *widget)
{
    QTest::mouseClick(widget, Qt::LeftButton, {}, QPoint(8, widget->height() / 2));
}

void clickButton(const QWizard &wizard, QWizard::WizardButton button)
{
    clickWidget(wizard.button(button));
}

void clickButton(const QDialog &dialog, QDialogButtonBox::StandardButton button)
{
    clickWidget(dialog.findChild<QDialogButtonBox *>()->button(button));
}

void clickAction(const QWidget &window, const char *name)
{
    const auto buttons = window.findChildren<QToolButton *>();
    const auto *action = findWidget<QAction>(window, name);
    const auto button = std::find_if(buttons.cbegin(), buttons.cend(),
                                     [action](const auto *button) { return button->defaultAction() == action; });
    QVERIFY(button != buttons.cend());
    QTRY_VERIFY((*button)->isVisible() && (*button)->isEnabled());
    clickWidget(*button);
}

void clickTab(QTabBar *tabs, int index)
{
    QTest::mouseClick(tabs, Qt::LeftButton, {}, tabs->tabRect(index).center());
}

void clickCell(QAbstractItemView *view, const QModelIndex &cell, Qt::KeyboardModifiers modifiers)
{
    view->scrollTo(cell);
    QTest::mouseClick(view->viewport(), Qt::LeftButton, modifiers, view->visualRect(cell).center());
}

void doubleClickCell(QAbstractItemView *view, const QModelIndex &cell)
{
    view->scrollTo(cell);
    QTest::mouseDClick(view->viewport(), Qt::LeftButton, {}, view->visualRect(cell).center());
}

void openContextMenu(QAbstractItemView *view, const QModelIndex &cell)
{
    const QPoint pos = view->visualRect(cell).center();
    QContextMenuEvent event(QContextMenuEvent::Mouse, pos, view->viewport()->mapToGlobal(pos));
    QApplication::sendEvent(view->viewport(), &event);
}

QMenu *openedMenu()
{
    return qobject_cast<QMenu *>(QApplication::activePopupWidget());
}

QAction *menuEntry(const QMenu &menu, const QString &text)
{
    const auto entries = menu.actions();
    const auto found =
        std::find_if(entries.cbegin(), entries.cend(), [&text](const QAction *entry) { return entry->text() == text; });
    return found != entries.cend() ? *found : nullptr;
}

void clickMenuEntry(QMenu *menu, QAction *entry)
{
    QVERIFY(menu && entry);
    QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(entry).center());
}

void chooseMenuEntry(const QString &submenu, const QString &text)
{
    QMenu *menu = openedMenu();
    QVERIFY(menu);
    QAction *group = menuEntry(*menu, submenu);
    clickMenuEntry(menu, group);
    QTRY_VERIFY(group->menu()->isVisible());
    clickMenuEntry(group->menu(), menuEntry(*group->menu(), text));
    QTRY_VERIFY(!openedMenu());
}

void chooseMenuEntryByKeys(const QString &submenu, const QString &text)
{
    for (const QString &wanted : {submenu, text}) {
        QMenu *menu = openedMenu();
        QVERIFY(menu);
        for (int i = 0; i < 10 && !(menu->activeAction() && menu->activeAction()->text() == wanted); ++i)
            QTest::keyClick(menu, Qt::Key_Down);
        QVERIFY(menu->activeAction());
        QCOMPARE(menu->activeAction()->text(), wanted);
        QTest::keyClick(menu, wanted == submenu ? Qt::Key_Right : Qt::Key_Return);
    }
    QTRY_VERIFY(!openedMenu());
}

QModelIndex findRow(const QAbstractItemModel &tree, quint32 id)
{
    return tree.match(tree.index(0, 0), Qt::DisplayRole, id, 1, Qt::MatchExactly | Qt::MatchRecursive).value(0);
}

QStringList columnTexts(const QAbstractItemModel &model, int column)
{
    QStringList texts;
    for (int row = 0; row < model.rowCount(); ++row)
        texts.append(model.index(row, column).data().toString());
    return texts;
}

void expectWarning(const QString &text)
{
    QTest::ignoreMessage(QtWarningMsg, qPrintable(text));
}

} // namespace support
