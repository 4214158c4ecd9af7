#pragma once

#include "connectionstate.h"
#include "pluginwidget.h"
#include "storeaddress.h"
#include "tqstyles.h"

#include <QList>
#include <QMainWindow>
#include <QPointer>

#include <memory>

class PopupStack;
class QLabel;
class QListWidgetItem;

namespace Ui {
class MainWindow;
}

/// The client's window: the page list, the tabs of the current page, the page itself, the state of the connection.
///
/// Besides the pages of the plug-ins it shows one of three states of its own: the store is being opened, could not be
/// opened, or there is no page to show.
class MainWindow final : public QMainWindow
{
    Q_OBJECT

public:
    using Connection = ConnectionState::Connection;

    /// Takes the place, the theme and the rest that was remembered.
    explicit MainWindow(QWidget *parent = nullptr);
    ~MainWindow() override;

    [[nodiscard]] PopupStack *popups() const { return m_popups; }
    void addNotice(const QString &text);

    /// Places the page of the plug-in \a name in the window, not shown yet. The window takes \a page over.
    void insertPage(const QString &name, QWidget *page);
    /// Asks the page for its tabs, tells it the current one and lists it if the user may see it.
    void listPage(const QString &name);
    /// Takes a page out again that could not be brought up.
    void dropPage(const QString &name);
    /// Asks every page again whether the user may see it.
    void updatePageVisibility();
    /// Names of the pages that the list shows, in its order.
    [[nodiscard]] QStringList shownPages() const;
    [[nodiscard]] int tabCount(const QString &name) const;
    /// Brings a page to the front; false when there is none of that name or the user may not see it.
    bool showPage(const QString &name);
    void showTab(int position);

    /// No more pages come: shows the page that was shown last time, or \a emptyText when there is none to show.
    void showPages(const QString &emptyText);
    void showOpening(const store::StoreAddress &address);
    void showFailure(const store::StoreAddress &address, const QString &text);
    /// \a reason: what hinders the connection, empty where that is not known.
    void setConnection(Connection connection, const store::StoreAddress &address, const QString &reason = {});
    void setLogin(const QString &login);

    /// Shows a theme without remembering it.
    void setTheme(tqstyles::Theme theme);

signals:
    void openRequested(const store::StoreAddress &address);
    void createRequested(const store::StoreAddress &address);

protected:
    void changeEvent(QEvent *event) override;
    void closeEvent(QCloseEvent *event) override;

private:
    struct Page
    {
        QString name;
        QPointer<QWidget> widget;
        QListWidgetItem *item = nullptr; ///< of the page list; null until the page is listed
        QList<PLUGIN_TAB> tabs;
        int tab = 0; ///< index of the current tab, as the page counts
    };

    void initMenus();
    void initThemeMenu();
    void initStatusBar();
    [[nodiscard]] Page *page(const QString &name);
    [[nodiscard]] Page *currentPage();
    void currentRowChanged(int row);
    void currentTabChanged(int position);
    void stepTab(int step);
    void fillTabs(const Page *page);
    void enterPage();
    void setOwnState(QWidget *state);
    void setNarrow(bool narrow);
    void layOutPageList();
    void chooseStore();
    void about();
    void restoreState();
    void keepState();

    std::unique_ptr<Ui::MainWindow> m_ui;
    PopupStack *m_popups = nullptr;
    ConnectionState *m_connection = nullptr;
    QLabel *m_login = nullptr;
    QList<Page> m_pages;
    store::StoreAddress m_address;
    QString m_emptyText;
    bool m_pagesShown = false; ///< false while a state of the window's own is shown instead of the pages
};
