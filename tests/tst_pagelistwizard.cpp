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
    BranchingPage() { setTitle(QStringLiteral("Выбор")); }
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
        m_wizard->setPage(1, new NamedPage(QStringLiteral("Первый вид"), {}));
        m_wizard->setPage(2, new NamedPage(QStringLiteral("Второй вид"), {}));
        m_wizard->setPage(3, new NamedPage(QStringLiteral("Сохранение записи"), QStringLiteral("Сохранение")));
        m_wizard->addPageGroup(QStringLiteral("Параметры"), {1, 2});
        m_wizard->setPageListVisible(true);
        m_list = m_wizard->findChild<QListWidget *>(QStringLiteral("pageList"));
        QVERIFY(m_list);
        m_wizard->show();
        QVERIFY(QTest::qWaitForWindowExposed(m_wizard.get()));
    }

    void cleanup() { m_wizard.reset(); }

    void shouldNameStepsByListTextGroupOrTitle()
    {
        const QStringList expected{QStringLiteral("Выбор"), QStringLiteral("Параметры"), QStringLiteral("Сохранение")};
        QCOMPARE(steps(), expected);
    }

    void shouldMarkTheStepsWhenTheOperatorMoves()
    {
        const auto pending = int(PageListWizard::StepPending);
        const auto current = int(PageListWizard::StepCurrent);
        const auto done = int(PageListWizard::StepDone);

        QCOMPARE(states(), QList<int>({current, pending, pending}));
        click(QWizard::NextButton);
        QCOMPARE(m_wizard->currentId(), 2);
        QCOMPARE(states(), QList<int>({done, current, pending}));
        click(QWizard::NextButton);
        QCOMPARE(states(), QList<int>({done, done, current}));
        QVERIFY(m_list->item(1)->data(Qt::AccessibleTextRole).toString().startsWith(QStringLiteral("Параметры, ")));
        click(QWizard::BackButton);
        click(QWizard::BackButton);
        QCOMPARE(states(), QList<int>({current, pending, pending}));
    }

    void shouldFollowAddedAndRemovedPages()
    {
        m_wizard->removePage(1);
        QCoreApplication::processEvents();
        QCOMPARE(steps().value(1), QStringLiteral("Параметры"));
        m_wizard->removePage(2);
        QTRY_COMPARE(steps(), QStringList({QStringLiteral("Выбор"), QStringLiteral("Сохранение")}));
        m_wizard->setPage(7, new NamedPage(QStringLiteral("Итог"), {}));
        QCOMPARE(steps().last(), QStringLiteral("Итог"));
    }

    void shouldGrowWithTheFont()
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
    [[nodiscard]] QStringList steps() const
    {
        QStringList texts;
        for (int row = 0; row < m_list->count(); ++row)
            texts.append(m_list->item(row)->text());
        return texts;
    }

    [[nodiscard]] QList<int> states() const
    {
        QList<int> states;
        for (int row = 0; row < m_list->count(); ++row)
            states.append(m_list->item(row)->data(PageListWizard::StepStateRole).toInt());
        return states;
    }

    void click(QWizard::WizardButton button) { support::clickButton(*m_wizard, button); }

    std::unique_ptr<PageListWizard> m_wizard;
    QListWidget *m_list = nullptr;
};

QTEST_MAIN(tst_PageListWizard)
#include "tst_pagelistwizard.moc"
