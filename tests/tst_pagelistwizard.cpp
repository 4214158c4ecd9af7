#include "hands.h"
#include "pagelistwizard.h"
#include "tqwizardpage.h"

#include <QAbstractButton>
#include <QListWidget>
#include <QScreen>
#include <QtTest>

namespace {

class NamedPage final : public TQWizardPage
{
public:
    NamedPage(const QString &title, const QString &listText)
        : m_listText(listText)
    {
        setTitle(title);
    }
    [[nodiscard]] QString pageListText() const override { return m_listText; }

private:
    QString m_listText;
};

/// Skips page 1, the first page of the group.
class BranchingPage final : public TQWizardPage
{
public:
    BranchingPage() { setTitle("Выбор"); }
    [[nodiscard]] int nextId() const override { return 2; }
};

} // namespace

class tst_PageListWizard : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_wizard = std::make_unique<PageListWizard>();
        m_wizard->setPage(0, new BranchingPage);
        m_wizard->setPage(1, new NamedPage("Первый вид", {}));
        m_wizard->setPage(2, new NamedPage("Второй вид", {}));
        m_wizard->setPage(3, new NamedPage("Сохранение записи", "Сохранение"));
        m_wizard->addPageGroup("Параметры", {1, 2});
        m_wizard->setPageListVisible(true);
        m_list = support::findWidget<QListWidget>(*m_wizard, "pageList");
        m_wizard->show();
        support::activateWindow(m_wizard.get());
    }

    void cleanup() { m_wizard.reset(); }

    void shouldNameAndMarkTheSteps()
    {
        QCOMPARE(steps(), (QStringList{"> Выбор", "Параметры", "Сохранение"}));
        click(QWizard::NextButton);
        QCOMPARE(m_wizard->currentId(), 2);
        QCOMPARE(steps(), (QStringList{"+ Выбор", "> Параметры", "Сохранение"}));
        click(QWizard::NextButton);
        QCOMPARE(steps(), (QStringList{"+ Выбор", "+ Параметры", "> Сохранение"}));
        QVERIFY(m_list->item(1)->data(Qt::AccessibleTextRole).toString().startsWith("Параметры, "));
        click(QWizard::BackButton);
        click(QWizard::BackButton);
        QCOMPARE(steps(), (QStringList{"> Выбор", "Параметры", "Сохранение"}));
    }

    void shouldFollowAddedAndRemovedPages()
    {
        m_wizard->removePage(1);
        QCoreApplication::processEvents();
        QCOMPARE(steps().value(1), "Параметры");
        m_wizard->removePage(2);
        QTRY_COMPARE(steps(), QStringList({"> Выбор", "Сохранение"}));
        m_wizard->setPage(7, new NamedPage("Итог", {}));
        QCOMPARE(steps().last(), "Итог");
    }

    void shouldWidenThePageListWithTheFont()
    {
        QVERIFY(m_list->isVisible());
        const int width = m_list->width();
        QFont font = m_wizard->font();
        font.setPointSize(2 * font.pointSize());
        m_list->setFont(font);
        QTRY_VERIFY(m_list->width() > width * 3 / 2);
    }

    void shouldStayOnTheScreenWithALargePage()
    {
        const QRect available = m_wizard->screen()->availableGeometry();
        m_wizard->page(2)->setMinimumSize(available.size() * 2 / 3);
        m_wizard->move(available.center());
        click(QWizard::NextButton);
        QTRY_VERIFY(available.contains(m_wizard->frameGeometry()));
    }

private:
    /// The names of the steps; "> " before the current one, "+ " before those that are done.
    [[nodiscard]] QStringList steps() const
    {
        static const QMap<int, QString> marks{
            {PageListWizard::StepPending, ""}, {PageListWizard::StepCurrent, "> "}, {PageListWizard::StepDone, "+ "}};
        QStringList texts;
        for (int row = 0; row < m_list->count(); ++row) {
            const auto *item = m_list->item(row);
            texts.append(marks.value(item->data(PageListWizard::StepStateRole).toInt(), "? ") + item->text());
        }
        return texts;
    }

    void click(QWizard::WizardButton button) { support::clickButton(*m_wizard, button); }

    std::unique_ptr<PageListWizard> m_wizard;
    QListWidget *m_list = nullptr;
};

QTEST_MAIN(tst_PageListWizard)
#include "tst_pagelistwizard.moc"
