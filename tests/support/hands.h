#pragma once

#include <QAbstractItemView>
#include <QDialogButtonBox>
#include <QPushButton>
#include <QWizard>

class QAction;
class QMenu;
class QTabBar;

/// Mouse and keyboard for tests with widgets.
namespace support {

/// Makes the window the active one and waits until it is.
void activateWindow(QWidget *window);
/// The widget that receives keys.
[[nodiscard]] QWidget *focusWidget();
void pressKey(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
/// Types any text; `QTest::keyClicks` supports Latin letters only.
void typeText(QWidget *widget, const QString &text);

/// The child with an object name; ends the program when there is none.
template <class Widget> [[nodiscard]] Widget *findWidget(const QWidget &parent, const char *name)
{
    auto *widget = parent.findChild<Widget *>(QLatin1String(name));
    if (!widget)
        qFatal("There is no %s", name);
    return widget;
}

/// Clicks near the left edge, where a check box has its mark.
void clickWidget(QWidget *widget);
void clickButton(const QWizard &wizard, QWizard::WizardButton button);
void clickButton(const QDialog &dialog, QDialogButtonBox::StandardButton button);
/// Clicks the tool button of an action as soon as it is enabled.
void clickAction(const QWidget &window, const char *name);
void clickTab(QTabBar *tabs, int index);
void clickCell(QAbstractItemView *view, const QModelIndex &cell, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
void doubleClickCell(QAbstractItemView *view, const QModelIndex &cell);

void openContextMenu(QAbstractItemView *view, const QModelIndex &cell);
[[nodiscard]] QMenu *openedMenu();
[[nodiscard]] QAction *menuEntry(const QMenu &menu, const QString &text);
void clickMenuEntry(QMenu *menu, QAction *entry);
/// Clicks an entry in a submenu of the opened menu.
void chooseMenuEntry(const QString &submenu, const QString &text);
/// The same with arrow keys.
void chooseMenuEntryByKeys(const QString &submenu, const QString &text);

/// The row of a tree whose display value is an identifier.
[[nodiscard]] QModelIndex findRow(const QAbstractItemModel &tree, quint32 id);
[[nodiscard]] QStringList columnTexts(const QAbstractItemModel &model, int column);

/// Expects a warning with this text; the test fails without it.
void expectWarning(const QString &text);

} // namespace support
