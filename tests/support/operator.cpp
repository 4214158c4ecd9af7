#include "operator.h"

#include "calendarcells.h"
#include "hands.h"

#include <QDialog>
#include <QLineEdit>
#include <QPointer>
#include <QTabBar>
#include <QTableView>
#include <QtTest>

using namespace support;

void Operator::addDevices()
{
    QTest::addColumn<bool>("mouse");
    QTest::newRow("mouse") << true;
    QTest::newRow("keyboard") << false;
}

void Operator::focus(QWidget *widget) const
{
    if (m_mouse) {
        clickWidget(widget);
        return;
    }
    for (int i = 0; i < 40 && focusWidget() != widget; ++i)
        pressKey(Qt::Key_Tab);
    if (focusWidget() != widget)
        qFatal("Tab does not reach %s", qPrintable(widget->objectName()));
}

void Operator::press(QWidget *button) const
{
    focus(button);
    if (!m_mouse)
        pressKey(Qt::Key_Space);
}

void Operator::trigger(const char *action, Qt::Key key) const
{
    if (m_mouse) {
        clickAction(*QApplication::activeWindow(), action);
        return;
    }
    focus(widget("scheduleView"));
    pressKey(key);
}

void Operator::selectTab(QTabBar *tabs, int index) const
{
    if (m_mouse)
        clickTab(tabs, index);
    while (!m_mouse && tabs->currentIndex() != index)
        pressKey(Qt::Key_Tab, Qt::ControlModifier);
}

void Operator::enterText(const char *name, const QString &text) const
{
    focus(widget(name));
    pressKey(Qt::Key_A, Qt::ControlModifier);
    typeText(focusWidget(), text);
}

void Operator::enterTime(const char *name, const QString &digits) const
{
    focus(widget(name));
    auto *hours = widget(name)->findChild<QLineEdit *>();
    if (m_mouse)
        QTest::mouseDClick(hours, Qt::LeftButton, {}, QPoint(8, hours->height() / 2));
    QTest::keyClicks(focusWidget(), digits);
}

void Operator::continueWizard() const
{
    const auto *wizard = qobject_cast<QWizard *>(QApplication::activeWindow());
    if (m_mouse)
        clickButton(*wizard, wizard->nextId() < 0 ? QWizard::FinishButton : QWizard::NextButton);
    else
        pressKey(Qt::Key_Return);
}

void Operator::acceptDialog() const
{
    const QPointer<QDialog> dialog = qobject_cast<QDialog *>(QApplication::activeWindow());
    QVERIFY(dialog);
    if (m_mouse)
        clickButton(*dialog, QDialogButtonBox::Ok);
    else
        pressKey(Qt::Key_Return);
    QVERIFY(!dialog || !dialog->isVisible());
}

void Operator::selectCell(const char *table, int row, int column) const
{
    auto *view = widget<QTableView>(table);
    const QModelIndex wanted = view->model()->index(row, column);
    if (m_mouse) {
        clickCell(view, wanted);
        return;
    }
    focus(view);
    for (int i = 0; i < 40 && view->currentIndex().row() != row; ++i)
        pressKey(view->currentIndex().row() < row ? Qt::Key_Down : Qt::Key_Up);
    for (int i = 0; i < 40 && view->currentIndex().column() != column; ++i)
        pressKey(view->currentIndex().column() < column ? Qt::Key_Right : Qt::Key_Left);
    QCOMPARE(view->currentIndex(), wanted);
}

void Operator::openCell(const char *table, int row, int column, Qt::Key key) const
{
    selectCell(table, row, column);
    auto *view = widget<QTableView>(table);
    if (m_mouse)
        doubleClickCell(view, view->currentIndex());
    else
        pressKey(key);
}

void Operator::toggleCell(const char *table, int row, int column) const
{
    selectCell(table, row, column);
    if (!m_mouse)
        pressKey(Qt::Key_Space);
}

void Operator::chooseForDays(const QDate &first, int count, const QString &submenu, const QString &entry) const
{
    auto *days = widget<QTableView>("calendarView");
    const QModelIndex from = calendarCell(*days->model(), first);
    selectCell("calendarView", from.row(), from.column());
    if (m_mouse && count > 1)
        clickCell(days, calendarCell(*days->model(), first.addDays(count - 1)), Qt::ShiftModifier);
    for (int i = 1; !m_mouse && i < count; ++i)
        pressKey(Qt::Key_Right, Qt::ShiftModifier);
    QCOMPARE(days->selectionModel()->selectedIndexes().size(), count);
    if (m_mouse) {
        openContextMenu(days, days->currentIndex());
        chooseMenuEntry(submenu, entry);
    } else {
        pressKey(Qt::Key_F10, Qt::ShiftModifier);
        chooseMenuEntryByKeys(submenu, entry);
    }
}
