#include "mainwindow.h"

#include "availablewindowsize.h"
#include "connectionstate.h"
#include "popupstack.h"
#include "settings.h"
#include "ui_mainwindow.h"

#include <QActionGroup>
#include <QCloseEvent>
#include <QFileDialog>
#include <QFileInfo>
#include <QMenuBar>
#include <QMessageBox>
#include <QShortcut>
#include <QToolTip>

#include <algorithm>
#include <array>

namespace {

const QLatin1String GeometryKey("client/geometry");
const QLatin1String PageKey("client/page");
const QLatin1String NarrowKey("client/narrowPageList");
const QLatin1String ThemeKey("client/theme");

QString tabKey(const QString &page)
{
    return QStringLiteral("client/tabs/") + page;
}

bool canShow(const QWidget *page)
{
    const auto *pluginPage = qobject_cast<const PluginWidget *>(page);
    return !pluginPage || pluginPage->canShow();
}

} // namespace

MainWindow::MainWindow(QWidget *parent)
    : QMainWindow(parent)
    , m_ui(std::make_unique<Ui::MainWindow>())
{
    m_ui->setupUi(this);
    m_popups = new PopupStack(m_ui->centralWidget);
    setWindowIcon(QIcon::fromTheme(QStringLiteral("orvex")));
    setMinimumSize(480, 300);
    resize(QSize(1280, 720).boundedTo(availableWindowSize(*this)));
    auto *menuKey = new QShortcut(Qt::Key_F10, this);
    connect(menuKey, &QShortcut::activated, this, [this] {
        menuBar()->setFocus(Qt::MenuBarFocusReason);
        menuBar()->setActiveAction(menuBar()->actions().constFirst());
    });
    m_ui->pageTabs->setDocumentMode(true);
    m_ui->pageTabs->setExpanding(false);
    m_ui->pageTabs->setElideMode(Qt::ElideRight);
    m_ui->pageTabs->hide();
    m_ui->sideLine->setForegroundRole(QPalette::Mid);
    m_ui->pageList->viewport()->setBackgroundRole(QPalette::Window);
    initMenus();
    initStatusBar();

    connect(m_ui->pageList, &QListWidget::currentRowChanged, this, &MainWindow::currentRowChanged);
    connect(m_ui->pageList, &QListWidget::itemActivated, this, &MainWindow::focusPage);
    connect(m_ui->pageTabs, &QTabBar::currentChanged, this, &MainWindow::currentTabChanged);
    connect(m_ui->pageListToggle, &QToolButton::clicked, m_ui->actionNarrowPageList, &QAction::trigger);
    connect(m_ui->failurePage, &StoreFailurePage::openRequested, this, &MainWindow::openRequested);
    connect(m_ui->failurePage, &StoreFailurePage::createRequested, this, &MainWindow::createRequested);
    connect(m_ui->failurePage, &StoreFailurePage::chooseRequested, this, &MainWindow::chooseStore);
    readSettings();
}

MainWindow::~MainWindow() = default;

void MainWindow::initMenus()
{
    m_ui->actionOpenStore->setIcon(QIcon::fromTheme(QStringLiteral("document-open")));
    m_ui->actionQuit->setIcon(QIcon::fromTheme(QStringLiteral("application-exit")));
    m_ui->actionAbout->setIcon(QIcon::fromTheme(QStringLiteral("dialog-information")));
    connect(m_ui->actionOpenStore, &QAction::triggered, this, &MainWindow::chooseStore);
    connect(m_ui->actionQuit, &QAction::triggered, this, &QWidget::close);
    connect(m_ui->actionAbout, &QAction::triggered, this, &MainWindow::about);
    connect(m_ui->actionNarrowPageList, &QAction::toggled, this, &MainWindow::setNarrow);
    connect(m_ui->actionNextTab, &QAction::triggered, this, [this] { stepTab(1); });
    connect(m_ui->actionPreviousTab, &QAction::triggered, this, [this] { stepTab(-1); });
    initThemeMenu();
}

void MainWindow::initThemeMenu()
{
    struct Choice
    {
        QAction *action;
        const char *icon;
        tqstyles::Theme theme;
    };
    const std::array choices = {
        Choice{m_ui->actionThemeLight, "view-theme-light", tqstyles::Theme::Light},
        Choice{m_ui->actionThemeDark, "view-theme-dark", tqstyles::Theme::Dark},
        Choice{m_ui->actionThemeSystem, "view-theme-system", tqstyles::Theme::System},
    };
    auto *group = new QActionGroup(this);
    for (const Choice &choice : choices) {
        choice.action->setIcon(QIcon::fromTheme(QLatin1String(choice.icon)));
        choice.action->setData(int(choice.theme));
        group->addAction(choice.action);
    }
    connect(group, &QActionGroup::triggered, this, [this](const QAction *action) {
        setTheme(tqstyles::Theme(action->data().toInt()));
        Settings::instance()->setValue(ThemeKey, action->data());
    });
}

void MainWindow::initStatusBar()
{
    m_connection = new ConnectionState(this);
    m_login = new QLabel(this);
    m_login->setObjectName(QStringLiteral("loginText"));
    m_login->setTextFormat(Qt::PlainText);
    m_login->setContentsMargins(6, 1, 6, 1);
    statusBar()->addWidget(m_connection);
    statusBar()->addPermanentWidget(m_login);
}

void MainWindow::addNotice(const QString &text)
{
    m_ui->noticeStrip->addNotice(text);
}

void MainWindow::insertPage(const QString &name, QWidget *page)
{
    m_ui->pageStack->addWidget(page);
    Page entry;
    entry.name = name;
    entry.widget = page;
    m_pages.append(entry);
    if (auto *pluginPage = qobject_cast<PluginWidget *>(page))
        connect(pluginPage, &PluginWidget::popupCriticalMessageRequested, m_popups, &PopupStack::add);
}

void MainWindow::listPage(const QString &name)
{
    Page *entry = page(name);
    if (!entry || !entry->widget || entry->item)
        return;
    if (auto *pluginPage = qobject_cast<PluginWidget *>(entry->widget)) {
        entry->tabs = pluginPage->tabList();
        const int remembered = Settings::instance()->value(tabKey(name), -1).toInt();
        for (const PLUGIN_TAB &tab : qAsConst(entry->tabs)) {
            if (tab.index == remembered || (tab.current && remembered < 0))
                entry->tab = tab.index;
        }
        if (!entry->tabs.isEmpty())
            pluginPage->onTabActivated(entry->tab);
    }
    entry->item = new QListWidgetItem(entry->widget->windowIcon(), entry->widget->windowTitle());
    entry->item->setData(Qt::UserRole, name);
    entry->item->setData(Qt::AccessibleTextRole, entry->widget->windowTitle());
    entry->item->setToolTip(entry->widget->windowTitle());
    const QSignalBlocker blocker(m_ui->pageList);
    m_ui->pageList->addItem(entry->item);
    entry->item->setHidden(!canShow(entry->widget));
    layOutPageList();
}

void MainWindow::removePage(const QString &name)
{
    const int position = pagePosition(name);
    if (position < 0)
        return;
    const Page removed = m_pages.takeAt(position);
    const std::unique_ptr<QListWidgetItem> item(m_ui->pageList->takeItem(m_ui->pageList->row(removed.item)));
    if (removed.widget)
        m_ui->pageStack->removeWidget(removed.widget);
}

void MainWindow::updatePageVisibility()
{
    for (const Page &entry : qAsConst(m_pages)) {
        if (entry.item)
            entry.item->setHidden(!canShow(entry.widget));
    }
    layOutPageList();
    if (m_pagesShown)
        showPages(m_emptyText);
}

QStringList MainWindow::shownPages() const
{
    QStringList names;
    for (const Page &entry : m_pages) {
        if (entry.item && !entry.item->isHidden())
            names.append(entry.name);
    }
    return names;
}

int MainWindow::tabCount(const QString &name) const
{
    const int position = pagePosition(name);
    return position < 0 ? 0 : m_pages.at(position).tabs.size();
}

bool MainWindow::showPage(const QString &name)
{
    const Page *entry = page(name);
    if (!m_pagesShown || !entry || !entry->item || entry->item->isHidden())
        return false;
    m_ui->pageList->setCurrentItem(entry->item);
    return true;
}

void MainWindow::showTab(int position)
{
    m_ui->pageTabs->setCurrentIndex(position);
}

void MainWindow::showPages(const QString &emptyText)
{
    const bool first = !m_pagesShown;
    m_pagesShown = true;
    m_emptyText = emptyText;
    m_ui->pageList->setEnabled(true);
    const QStringList shown = shownPages();
    if (shown.isEmpty()) {
        m_ui->emptyText->setText(emptyText);
        m_ui->pageList->setCurrentRow(-1);
        showOwnPage(m_ui->emptyPage);
        return;
    }
    QString wanted = Settings::instance()->value(PageKey).toString();
    if (const auto *item = m_ui->pageList->currentItem())
        wanted = item->data(Qt::UserRole).toString();
    const QString name = shown.contains(wanted) ? wanted : shown.first();
    showPage(name);
    currentRowChanged(m_ui->pageList->currentRow());
    if (first)
        focusPage();
}

void MainWindow::showOpening(const store::StoreAddress &address)
{
    m_address = address;
    m_pagesShown = false;
    m_ui->pageList->setEnabled(false);
    showOwnPage(m_ui->waitPage);
    setConnection(Connection::Opening, address);
}

void MainWindow::showFailure(const store::StoreAddress &address, const QString &text)
{
    m_address = address;
    m_pagesShown = false;
    m_ui->pageList->setEnabled(false);
    showOwnPage(m_ui->failurePage);
    m_ui->failurePage->setFailure(address, text);
    setConnection(Connection::Closed, address, text);
}

void MainWindow::setConnection(Connection connection, const store::StoreAddress &address, const QString &reason)
{
    m_connection->setConnection(connection, address, reason);
}

void MainWindow::setLogin(const QString &login)
{
    m_login->setText(login.isEmpty() ? QString() : tr("Пользователь: %1").arg(login));
}

void MainWindow::setTheme(tqstyles::Theme theme)
{
    tqstyles::applyTheme(theme);
    QToolTip::setPalette(QGuiApplication::palette());
    for (QAction *action : {m_ui->actionThemeLight, m_ui->actionThemeDark, m_ui->actionThemeSystem})
        action->setChecked(action->data().toInt() == int(theme));
}

void MainWindow::changeEvent(QEvent *event)
{
    QMainWindow::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)
        layOutPageList();
}

void MainWindow::closeEvent(QCloseEvent *event)
{
    writeSettings();
    QMainWindow::closeEvent(event);
}

int MainWindow::pagePosition(const QString &name) const
{
    const auto it =
        std::find_if(m_pages.cbegin(), m_pages.cend(), [&name](const Page &entry) { return entry.name == name; });
    return it == m_pages.cend() ? -1 : int(it - m_pages.cbegin());
}

MainWindow::Page *MainWindow::page(const QString &name)
{
    const int position = pagePosition(name);
    return position < 0 ? nullptr : &m_pages[position];
}

MainWindow::Page *MainWindow::currentPage()
{
    const auto *item = m_ui->pageList->currentItem();
    return m_pagesShown && item ? page(item->data(Qt::UserRole).toString()) : nullptr;
}

void MainWindow::currentRowChanged(int row)
{
    Q_UNUSED(row)
    const Page *entry = currentPage();
    if (!entry || !entry->widget || m_ui->pageStack->currentWidget() == entry->widget)
        return;
    fillTabs(entry);
    m_ui->pageStack->setCurrentWidget(entry->widget);
    if (auto *pluginPage = qobject_cast<PluginWidget *>(entry->widget))
        pluginPage->activated();
}

void MainWindow::currentTabChanged(int position)
{
    Page *entry = currentPage();
    if (!entry || position < 0 || position >= entry->tabs.size())
        return;
    entry->tab = entry->tabs.at(position).index;
    if (auto *pluginPage = qobject_cast<PluginWidget *>(entry->widget))
        pluginPage->onTabActivated(entry->tab);
}

void MainWindow::stepTab(int step)
{
    const int count = m_ui->pageTabs->count();
    if (count > 0)
        m_ui->pageTabs->setCurrentIndex((m_ui->pageTabs->currentIndex() + step + count) % count);
}

void MainWindow::fillTabs(const Page *page)
{
    const QSignalBlocker blocker(m_ui->pageTabs);
    while (m_ui->pageTabs->count() > 0)
        m_ui->pageTabs->removeTab(0);
    const QList<PLUGIN_TAB> tabs = page ? page->tabs : QList<PLUGIN_TAB>();
    for (const PLUGIN_TAB &tab : tabs) {
        const int position = m_ui->pageTabs->addTab(tab.icon, tab.title);
        if (tab.index == page->tab)
            m_ui->pageTabs->setCurrentIndex(position);
    }
    m_ui->pageTabs->setVisible(tabs.size() > 1);
    m_ui->actionNextTab->setEnabled(tabs.size() > 1);
    m_ui->actionPreviousTab->setEnabled(tabs.size() > 1);
}

void MainWindow::focusPage()
{
    auto *shown = m_ui->pageStack->currentWidget();
    if (auto *last = shown->focusWidget(); last && last->isVisible()) {
        last->setFocus();
        return;
    }
    // The central widget holds the main contents of a page; the tool bars are outside it.
    const auto *mainWindow = qobject_cast<QMainWindow *>(shown);
    QWidget *contents = mainWindow && mainWindow->centralWidget() ? mainWindow->centralWidget() : shown;
    QWidget *widget = contents;
    do {
        const bool isInside = widget == contents || contents->isAncestorOf(widget);
        if (isInside && widget->isVisible() && widget->isEnabled() && (widget->focusPolicy() & Qt::TabFocus)) {
            widget->setFocus();
            return;
        }
        widget = widget->nextInFocusChain();
    } while (widget != contents);
}

void MainWindow::showOwnPage(QWidget *page)
{
    fillTabs(nullptr);
    m_ui->pageStack->setCurrentWidget(page);
}

void MainWindow::setNarrow(bool narrow)
{
    Settings::instance()->setValue(NarrowKey, narrow);
    layOutPageList();
}

void MainWindow::layOutPageList()
{
    auto *list = m_ui->pageList;
    const bool narrow = m_ui->actionNarrowPageList->isChecked();
    const int padding = 12;
    const int icon = qMax(24, list->fontMetrics().height());
    list->setIconSize({icon, icon});
    int text = 0;
    for (const Page &entry : qAsConst(m_pages)) {
        if (!entry.item)
            continue;
        const QString title = entry.item->data(Qt::AccessibleTextRole).toString();
        entry.item->setText(narrow ? QString() : title);
        entry.item->setSizeHint({icon, qMax(icon, list->fontMetrics().height()) + padding});
        text = qMax(text, list->fontMetrics().horizontalAdvance(title));
    }
    const bool isNeeded = !shownPages().isEmpty();
    for (QWidget *part : {static_cast<QWidget *>(list), static_cast<QWidget *>(m_ui->pageListToggle),
                          static_cast<QWidget *>(m_ui->sideLine)})
        part->setVisible(isNeeded);
    const int wide = qBound(150, icon + text + 4 * padding, qMax(150, list->fontMetrics().averageCharWidth() * 32));
    list->setFixedWidth(narrow ? icon + 2 * padding : wide);
    m_ui->pageListToggle->setIcon(
        QIcon::fromTheme(narrow ? QStringLiteral("arrow-right") : QStringLiteral("arrow-left")));
    m_ui->pageListToggle->setToolTip(narrow ? tr("Показать названия страниц") : tr("Показывать только значки страниц"));
    m_ui->pageListToggle->setAccessibleName(m_ui->pageListToggle->toolTip());
}

void MainWindow::chooseStore()
{
    const QString folder = QFileInfo(m_address.filePath()).absolutePath();
    const QString file =
        QFileDialog::getOpenFileName(this, tr("Выбор хранилища"), folder, tr("Хранилища (*.db);;Все файлы (*)"));
    if (!file.isEmpty())
        emit openRequested(store::StoreAddress::file(file));
}

void MainWindow::about()
{
    QMessageBox::about(this, tr("О программе"),
                       tr("<h3>Учёт рабочего времени</h3><p>Версия %1</p>"
                          "<p>Графики работы, смены и календари сотрудников.</p>")
                           .arg(QStringLiteral(ORVEX_VERSION)));
}

void MainWindow::readSettings()
{
    const auto *settings = Settings::instance();
    restoreGeometry(settings->value(GeometryKey).toByteArray());
    m_ui->actionNarrowPageList->setChecked(settings->value(NarrowKey, false).toBool());
    const int system = int(tqstyles::Theme::System);
    setTheme(tqstyles::Theme(qBound(0, settings->value(ThemeKey, system).toInt(), system)));
    layOutPageList();
}

void MainWindow::writeSettings()
{
    auto *settings = Settings::instance();
    settings->setValue(GeometryKey, saveGeometry());
    if (const Page *entry = currentPage())
        settings->setValue(PageKey, entry->name);
    for (const Page &entry : qAsConst(m_pages)) {
        if (!entry.tabs.isEmpty())
            settings->setValue(tabKey(entry.name), entry.tab);
    }
    settings->sync();
}
