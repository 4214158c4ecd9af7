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
/// Instead of a plug-in's page it shows one of three pages of its own: the store is being opened, the store could not
/// be opened, there is no page to show.
class MainWindow final : public QMainWindow
{
    Q_OBJECT

public:
    using Connection = ConnectionState::Connection;

    /// Restores geometry, theme and page list from the settings.
    explicit MainWindow(QWidget *parent = nullptr);
    ~MainWindow() override;

    [[nodiscard]] PopupStack *popups() const { return m_popups; }
    void addNotice(const QString &text);

    /// Adds the page of the plug-in \a name, still hidden. The window takes ownership of \a page.
    void insertPage(const QString &name, QWidget *page);
    /// Reads the tabs of the page, activates the remembered one, and adds the page to the page list.
    void listPage(const QString &name);
    /// Removes the page of a plug-in that could not be initialised.
    void removePage(const QString &name);
    /// Asks every page again whether the operator may see it, and leaves a page that may no longer be seen.
    void updatePageVisibility();
    /// Names of the pages in the page list, in its order; hidden ones excluded.
    [[nodiscard]] QStringList shownPages() const;
    [[nodiscard]] int tabCount(const QString &name) const;
    /// Makes a page the current one; false if there is none of that name or the operator may not see it.
    bool showPage(const QString &name);
    void showTab(int position);

    /// Leaves the window's own pages: shows the remembered page, or \a emptyText if there is none to show.
    void showPages(const QString &emptyText);
    void showOpening(const store::StoreAddress &address);
    void showFailure(const store::StoreAddress &address, const QString &text);
    /// \a reason: why there is no connection; empty if unknown.
    void setConnection(Connection connection, const store::StoreAddress &address, const QString &reason = {});
    void setLogin(const QString &login);

    /// Applies a theme without saving it in the settings.
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
        QListWidgetItem *item = nullptr; ///< in the page list; null until `listPage`
        QList<PLUGIN_TAB> tabs;
        int tab = 0; ///< `PLUGIN_TAB::index` of the current tab
    };

    void initMenus();
    void initThemeMenu();
    void initStatusBar();
    /// The position of a page in `m_pages`; -1 if there is none.
    [[nodiscard]] int pagePosition(const QString &name) const;
    [[nodiscard]] Page *page(const QString &name);
    [[nodiscard]] Page *currentPage();
    void currentRowChanged(int row);
    void currentTabChanged(int position);
    void stepTab(int step);
    void fillTabs(const Page *page);
    void focusPage();
    void showOwnPage(QWidget *page);
    void setNarrow(bool narrow);
    void layOutPageList();
    void chooseStore();
    void about();
    void readSettings();
    void writeSettings();

    std::unique_ptr<Ui::MainWindow> m_ui;
    PopupStack *m_popups = nullptr;
    ConnectionState *m_connection = nullptr;
    QLabel *m_login = nullptr;
    QList<Page> m_pages;
    store::StoreAddress m_address;
    QString m_emptyText;
    bool m_pagesShown = false; ///< false while the window waits for a store
};
