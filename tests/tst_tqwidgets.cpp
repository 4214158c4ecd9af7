#include "fittedscrollarea.h"
#include "hands.h"
#include "hiddenpanel.h"
#include "hiddenpanelcontainer.h"
#include "searchwidget.h"
#include "settings.h"
#include "testcolumns.h"
#include "tqactionsinserthelper.h"
#include "tqstackedtoolbars.h"

#include <QAction>
#include <QDialog>
#include <QLineEdit>
#include <QMainWindow>
#include <QScreen>
#include <QScrollBar>
#include <QSpinBox>
#include <QSplitter>
#include <QStackedWidget>
#include <QTableWidget>
#include <QToolButton>
#include <QVBoxLayout>
#include <QWheelEvent>
#include <QtTest>

using namespace support;

namespace {

/// A page like those built by a form: the container gets layout and panel after its construction.
class PanelPage : public QMainWindow
{
public:
    PanelPage()
    {
        setObjectName("PanelPage");
        auto *layout = new QVBoxLayout(container);
        layout->setContentsMargins(0, 0, 0, 0);
        layout->addWidget(panel);
        container->setObjectName("frame");
        panel->setTitle("Свойства");
        setCentralWidget(splitter);
        resize(900, 400);
    }

    QSplitter *splitter = new QSplitter(this);
    QTableWidget *table = new QTableWidget(splitter);
    HiddenPanelContainer *container = new HiddenPanelContainer(splitter);
    HiddenPanel *panel = new HiddenPanel(container);

    QToolButton *handle() const { return container->findChild<QToolButton *>("panelHandle"); }
    void open()
    {
        show();
        support::activateWindow(this);
    }
};

QStringList texts(const QSignalSpy &spy)
{
    QStringList texts;
    for (const auto &arguments : spy)
        texts.append(arguments.first().toString());
    return texts;
}

} // namespace

class TestTqWidgets : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, m_settings.path()); }

    void shouldSearchWhileTyping()
    {
        SearchWidget search;
        search.setAdvancedButtonVisible(false);
        search.show();
        activateWindow(&search);
        auto *edit = findWidget<QLineEdit>(search, "searchEdit");
        const QSignalSpy spy(&search, &SearchWidget::startSearch);
        QTest::keyClicks(edit, "abc");
        QTest::keyClick(edit, Qt::Key_Backspace);
        search.setText("ab");
        QCOMPARE(texts(spy), QStringList({"a", "ab", "abc", "ab"}));
        QVERIFY(!findWidget<QToolButton>(search, "advancedSearchButton")->isVisible());

        // The line edit's own clear button.
        const auto buttons = edit->findChildren<QToolButton *>();
        const auto clear = std::find_if(buttons.cbegin(), buttons.cend(),
                                        [&search](const auto *button) { return button->x() > search.width() / 2; });
        QVERIFY(clear != buttons.cend());
        QTest::mouseClick(*clear, Qt::LeftButton);
        QCOMPARE(search.text(), QString());
        QCOMPARE(spy.last().first().toString(), QString());
    }

    void shouldClearOnEscapeAndPassTheNextOneToTheWindow()
    {
        QDialog dialog;
        auto *search = new SearchWidget(&dialog);
        dialog.show();
        activateWindow(&dialog);
        auto *edit = search->focusProxy();
        edit->setFocus();
        QTest::keyClicks(edit, "x");
        const QSignalSpy spy(search, &SearchWidget::startSearch);
        QTest::keyClick(edit, Qt::Key_Escape);
        QCOMPARE(texts(spy), QStringList{QString()});
        QVERIFY(dialog.isVisible());
        QTest::keyClick(edit, Qt::Key_Escape);
        QVERIFY(!dialog.isVisible());
    }

    void shouldFocusTheVisibleSearchFieldByCtrlF()
    {
        QStackedWidget stack;
        for (int i = 0; i < 2; ++i) {
            auto *page = new QWidget(&stack);
            auto *layout = new QVBoxLayout(page);
            layout->addWidget(new SearchWidget(page));
            layout->addWidget(new QTableWidget(page));
            stack.addWidget(page);
        }
        stack.show();
        activateWindow(&stack);
        for (int i = 0; i < 2; ++i) {
            stack.setCurrentIndex(i);
            auto *field = stack.currentWidget()->findChild<SearchWidget *>();
            auto *table = stack.currentWidget()->findChild<QTableWidget *>();
            field->setText("old");
            table->setFocus();
            QTest::keyClick(table, Qt::Key_F, Qt::ControlModifier);
            QVERIFY(field->focusProxy()->hasFocus());
            QTest::keyClicks(field->focusProxy(), "new");
            QCOMPARE(field->text(), "new");
        }
    }

    void shouldCollapseAndExpandThePanel()
    {
        PanelPage page;
        page.setObjectName("Collapsing");
        page.open();
        const int open = page.container->width();
        QVERIFY(page.panel->isVisible());
        page.resize(1200, 400);
        QTRY_COMPARE(page.splitter->width(), 1200);
        QCOMPARE(page.container->width(), open);
        QVERIFY(page.panel->x() >= page.handle()->geometry().right());

        QTest::mouseClick(page.handle(), Qt::LeftButton);
        QVERIFY(page.container->isCollapsed());
        QVERIFY(!page.panel->isVisible());
        QTRY_COMPARE(page.container->width(), page.handle()->width());
        QTRY_COMPARE(page.table->width(), 1200 - page.handle()->width() - page.splitter->handleWidth());
        QVERIFY(page.handle()->accessibleName().contains("Свойства"));

        page.handle()->setFocus(Qt::TabFocusReason);
        QTest::keyClick(page.handle(), Qt::Key_Space);
        QVERIFY(page.panel->isVisible());
        QTRY_COMPARE(page.container->width(), open);
    }

    void shouldScrollOnlyIfTheScreenIsTooSmall_data()
    {
        const QSize screen = QGuiApplication::primaryScreen()->availableSize();
        addColumns<QSize, bool>({"contents", "scrolls"});
        QTest::newRow("fits") << screen / 2 << false;
        QTest::newRow("too high") << QSize(100, screen.height()) << true;
        QTest::newRow("too wide") << QSize(screen.width(), 100) << true;
    }

    void shouldScrollOnlyIfTheScreenIsTooSmall()
    {
        QFETCH(QSize, contents);
        QFETCH(bool, scrolls);
        QDialog dialog;
        auto *layout = new QVBoxLayout(&dialog);
        auto *large = new QWidget(&dialog);
        auto *focused = new QLineEdit(&dialog);
        auto *last = new QSpinBox(&dialog);
        for (QWidget *widget : {large, static_cast<QWidget *>(focused), static_cast<QWidget *>(last)})
            layout->addWidget(widget);
        large->setMinimumSize(contents);
        FittedScrollArea::wrapContents(&dialog);
        dialog.show();
        activateWindow(&dialog);
        dialog.resize(dialog.minimumSizeHint());
        const auto *area = dialog.findChild<FittedScrollArea *>();
        QCOMPARE(area->horizontalScrollBar()->isVisible() || area->verticalScrollBar()->isVisible(), scrolls);
        QCOMPARE(dialog.size().boundedTo(dialog.screen()->availableSize()), dialog.size());
        focused->setFocus();
        QWheelEvent wheel({1, 1}, last->mapToGlobal(QPoint(1, 1)), {}, {0, 120}, Qt::NoButton, Qt::NoModifier,
                          Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(last, &wheel);
        QCOMPARE(last->value(), 0);
        last->setFocus(Qt::TabFocusReason);
        QVERIFY(!last->visibleRegion().isEmpty());
    }

    void shouldRestoreCollapsedStateAndWidth()
    {
        int wide = 0;
        {
            PanelPage page;
            page.open();
            page.splitter->setSizes({480, 420});
            wide = page.container->width();
            QVERIFY(wide > 380);
            page.container->setCollapsed(true);
            page.close();
        }
        {
            PanelPage page;
            page.open();
            QVERIFY(page.container->isCollapsed());
            QVERIFY(!page.panel->isVisible());
            page.container->setCollapsed(false);
            QTRY_COMPARE(page.container->width(), wide);
            page.close();
        }
        PanelPage page;
        page.open();
        QVERIFY(page.panel->isVisible());
        QTRY_COMPARE(page.container->width(), wide);
    }

    void shouldLimitARestoredWidthToTheWindow()
    {
        PanelPage page;
        page.setObjectName("Oversized");
        Settings::instance()->setValue("panels/Oversized.frame/width", 5000);
        page.open();
        QCOMPARE(page.width(), 900);
        QVERIFY(page.container->width() < 900);
        QVERIFY(page.splitter->sizes().constFirst() > 200);
    }

    void shouldBuildOneToolBarForEachPage()
    {
        QMainWindow window;
        QAction add("Добавить");
        QAction edit("Редактировать");
        QAction remove("Удалить");
        auto *stack = new TQStackedToolBars(&window);
        TQActionsInsertHelper::fillStackedWidget(stack, {{{&add}, {}, {&edit, &remove}}, {{&remove}}});
        window.setCentralWidget(stack);
        window.resize(600, 200);
        window.show();
        activateWindow(&window);

        QCOMPARE(stack->count(), 2);
        QCOMPARE(stack->currentIndex(), 0);
        QVector<bool> separators;
        const auto actions = stack->toolBar(0)->actions();
        for (const auto *action : actions)
            separators.append(action->isSeparator());
        QCOMPARE(separators, QVector<bool>({false, true, false, false}));
        QVERIFY(!stack->toolBar(2));

        const QSignalSpy spy(&edit, &QAction::triggered);
        auto *addButton = stack->toolBar(0)->widgetForAction(&add);
        addButton->setFocus(Qt::TabFocusReason);
        QTest::keyClick(addButton, Qt::Key_Tab);
        QCOMPARE(window.focusWidget(), stack->toolBar(0)->widgetForAction(&edit));
        QTest::keyClick(window.focusWidget(), Qt::Key_Space);
        QCOMPARE(spy.count(), 1);
    }

private:
    QTemporaryDir m_settings;
};

QTEST_MAIN(TestTqWidgets)
#include "tst_tqwidgets.moc"
