#include "picturetaker.h"

#include "mainwindow.h"

#include <QApplication>
#include <QDir>
#include <QPixmap>

#include <cstdio>

namespace {

// Panels are filled shortly after a selection; the store's replies take a few milliseconds.
constexpr int SettleTime = 400;

} // namespace

PictureTaker::PictureTaker(MainWindow &window, const QString &folder)
    : QObject(&window)
    , m_window(window)
    , m_folder(folder)
{
    m_settled.setSingleShot(true);
    m_settled.setInterval(SettleTime);
    connect(&m_settled, &QTimer::timeout, this, &PictureTaker::takeNext);
}

void PictureTaker::start()
{
    if (!QDir().mkpath(m_folder)) {
        emit finished(tr("Папку «%1» нельзя создать.").arg(m_folder));
        return;
    }
    planShots();
    if (m_shots.isEmpty())
        emit finished(tr("Нет ни одной страницы, которую можно показать."));
    else
        prepareNext();
}

void PictureTaker::planShots()
{
    for (const bool dark : {false, true}) {
        for (const QString &page : m_window.shownPages()) {
            const int tabs = qMax(1, m_window.tabCount(page));
            for (int tab = 0; tab < tabs; ++tab)
                m_shots.append({page, tab, dark});
        }
    }
}

void PictureTaker::prepareNext()
{
    const Shot &shot = m_shots.first();
    m_window.setTheme(shot.dark ? tqstyles::Theme::Dark : tqstyles::Theme::Light);
    m_window.showPage(shot.page);
    m_window.showTab(shot.tab);
    m_settled.start();
}

void PictureTaker::takeNext()
{
    const QString theme = m_shots.first().dark ? QStringLiteral("dark") : QStringLiteral("light");
    if (auto *dialog = QApplication::activeModalWidget()) {
        if (!write(dialog, QStringLiteral("%1-%2.png").arg(dialog->objectName(), theme)))
            return;
        dialog->close();
        m_settled.start();
        return;
    }
    const Shot shot = m_shots.takeFirst();
    if (!write(&m_window, QStringLiteral("%1-%2-%3.png").arg(shot.page).arg(shot.tab + 1).arg(theme)))
        return;
    if (m_shots.isEmpty())
        emit finished({});
    else
        prepareNext();
}

bool PictureTaker::write(QWidget *widget, const QString &name)
{
    const QString path = QDir(m_folder).absoluteFilePath(name);
    if (!widget->grab().save(path)) {
        emit finished(tr("Файл «%1» нельзя записать.").arg(path));
        return false;
    }
    std::printf("%s\n", qUtf8Printable(QDir::toNativeSeparators(path)));
    return true;
}
