#include "fittedscrollarea.h"
#include "hiddenpanel.h"
#include "hiddenpanelcontainer.h"
#include "searchwidget.h"
#include "tqactionsinserthelper.h"
#include "tqstackedtoolbars.h"

#include <QAction>
#include <QDialog>
#include <QLineEdit>
#include <QMainWindow>
#include <QScreen>
#include <QScrollBar>
#include <QSettings>
#include <QSignalSpy>
#include <QSpinBox>
#include <QSplitter>
#include <QStackedWidget>
#include <QTableWidget>
#include <QTemporaryDir>
#include <QToolButton>
#include <QVBoxLayout>
#include <QWheelEvent>
#include <QtTest>

namespace {

/// A page like those built by a form: the container gets layout and panel after its construction.
class PanelPage : public QMainWindow
{
public:
    PanelPage()
    {
        setObjectName(QStringLiteral("PanelPage"));
        auto *layout = new QVBoxLayout(container);
        layout->setContentsMargins(0, 0, 0, 0);
        layout->addWidget(panel);
        container->setObjectName(QStringLiteral("frame"));
        panel->setTitle(QStringLiteral("Свойства"));
        setCentralWidget(splitter);
        resize(900, 400);
    }

    QSplitter *splitter = new QSplitter(this);
    QTableWidget *table = new QTableWidget(splitter);
    HiddenPanelContainer *container = new HiddenPanelContainer(splitter);
    HiddenPanel *panel = new HiddenPanel(container);

    QToolButton *handle() const { return container->findChild<QToolButton *>(QStringLiteral("panelHandle")); }
    void open()
    {
        show();
        QVERIFY(QTest::qWaitForWindowExposed(this));
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
        QVERIFY(QTest::qWaitForWindowExposed(&search));
        const QSignalSpy spy(&search, &SearchWidget::startSearch);
        QTest::keyClicks(search.findChild<QLineEdit *>(), QStringLiteral("abc"));
        QTest::keyClick(search.findChild<QLineEdit *>(), Qt::Key_Backspace);
        search.setText(QStringLiteral("ab"));
        QCOMPARE(texts(spy), QStringList({"a", "ab", "abc", "ab"}));
        QVERIFY(!search.findChild<QToolButton *>(QStringLiteral("advancedSearchButton"))->isVisible());

        // The line edit's own clear button.
        QToolButton *clear = nullptr;
        const auto buttons = search.findChild<QLineEdit *>()->findChildren<QToolButton *>();
        for (auto *button : buttons) {
            if (button->x() > search.width() / 2)
                clear = button;
        }
        QVERIFY(clear);
        QTest::mouseClick(clear, Qt::LeftButton);
        QCOMPARE(search.text(), QString());
        QCOMPARE(spy.last().first().toString(), QString());
    }

    void shouldClearOnEscapeAndPassTheNextOneToTheWindow()
    {
        QDialog dialog;
        auto *search = new SearchWidget(&dialog);
        dialog.show();
        QVERIFY(QTest::qWaitForWindowActive(&dialog));
        auto *edit = search->findChild<QLineEdit *>();
        edit->setFocus();
        QTest::keyClicks(edit, QStringLiteral("x"));
        const QSignalSpy spy(search, &SearchWidget::startSearch);
        QTest::keyClick(edit, Qt::Key_Escape);
        QCOMPARE(texts(spy), QStringList{QString()});
        QVERIFY(dialog.isVisible());
        QTest::keyClick(edit, Qt::Key_Escape);
        QVERIFY(!dialog.isVisible());
    }

    void shouldFocusTheVisibleSearchFieldByCtrlF()
    {
        QMainWindow window;
        auto *stack = new QStackedWidget(&window);
        QList<SearchWidget *> fields;
        QList<QTableWidget *> tables;
        for (int i = 0; i < 2; ++i) {
            auto *page = new QWidget(stack);
            auto *layout = new QVBoxLayout(page);
            fields.append(new SearchWidget(page));
            tables.append(new QTableWidget(page));
            layout->addWidget(fields.last());
            layout->addWidget(tables.last());
            stack->addWidget(page);
        }
        window.setCentralWidget(stack);
        window.show();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        for (int i = 0; i < 2; ++i) {
            stack->setCurrentIndex(i);
            fields.at(i)->setText(QStringLiteral("old"));
            tables.at(i)->setFocus();
            QTest::keyClick(tables.at(i), Qt::Key_F, Qt::ControlModifier);
            QVERIFY(fields.at(i)->findChild<QLineEdit *>()->hasFocus());
            QTest::keyClicks(fields.at(i)->findChild<QLineEdit *>(), QStringLiteral("new"));
            QCOMPARE(fields.at(i)->text(), QStringLiteral("new"));
        }
    }

    void shouldCollapseAndExpandThePanel()
    {
        PanelPage page;
        page.setObjectName(QStringLiteral("Collapsing"));
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
        QVERIFY(page.handle()->accessibleName().contains(QStringLiteral("Свойства")));

        page.handle()->setFocus(Qt::TabFocusReason);
        QTest::keyClick(page.handle(), Qt::Key_Space);
        QVERIFY(page.panel->isVisible());
        QTRY_COMPARE(page.container->width(), open);
    }

    void shouldScrollOnlyIfTheScreenIsTooSmall_data()
    {
        const QSize screen = QGuiApplication::primaryScreen()->availableSize();
        QTest::addColumn<QSize>("contents");
        QTest::addColumn<bool>("scrolls");
        QTest::newRow("fits") << screen / 2 << false;
        QTest::newRow("too high") << QSize(100, screen.height()) << true;
        QTest::newRow("too wide") << QSize(screen.width(), 100) << true;
    }

    void shouldScrollOnlyIfTheScreenIsTooSmall()
    {
        QFETCH(QSize, contents);
        QFETCH(bool, scrolls);
        QDialog dialog;
        auto *large = new QWidget(&dialog);
        large->setMinimumSize(contents);
        auto *layout = new QVBoxLayout(&dialog);
        layout->addWidget(large);
        auto *focused = new QLineEdit(&dialog);
        layout->addWidget(focused);
        auto *last = new QSpinBox(&dialog);
        layout->addWidget(last);
        FittedScrollArea::wrapContents(&dialog);
        dialog.show();
        QVERIFY(QTest::qWaitForWindowExposed(&dialog));
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
        QSettings settings(QSettings::IniFormat, QSettings::UserScope, QStringLiteral("orvex"),
                           QStringLiteral("client"));
        PanelPage page;
        page.setObjectName(QStringLiteral("Oversized"));
        settings.setValue(QStringLiteral("panels/Oversized.frame/width"), 5000);
        settings.sync();
        page.open();
        QCOMPARE(page.width(), 900);
        QVERIFY(page.container->width() < 900);
        QVERIFY(page.splitter->sizes().constFirst() > 200);
    }

    void shouldBuildOneToolBarForEachPage()
    {
        QMainWindow window;
        QAction add(QStringLiteral("Добавить"));
        QAction edit(QStringLiteral("Редактировать"));
        QAction remove(QStringLiteral("Удалить"));
        QAction other(QStringLiteral("Другое"));
        auto *stack = new TQStackedToolBars(&window);
        TQActionsInsertHelper::fillStackedWidget(stack, {{{&add}, {}, {&edit, &remove}}, {{&other}}});
        window.setCentralWidget(stack);
        window.resize(600, 200);
        window.show();
        QVERIFY(QTest::qWaitForWindowActive(&window));

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
