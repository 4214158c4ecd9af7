#include "searchwidget.h"

#include <QAction>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLineEdit>
#include <QShortcut>
#include <QToolButton>

namespace {

QString withShortcut(const QString &text)
{
    return QStringLiteral("%1 (%2)").arg(text, QKeySequence(QKeySequence::Find).toString(QKeySequence::NativeText));
}

} // namespace

SearchWidget::SearchWidget(QWidget *parent)
    : QWidget(parent)
    , m_edit(new QLineEdit(this))
    , m_advanced(new QToolButton(this))
{
    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(6, 0, 6, 0);
    layout->setSpacing(4);
    layout->addWidget(m_edit);
    layout->addWidget(m_advanced);

    m_edit->setObjectName(QStringLiteral("searchEdit"));
    m_edit->setClearButtonEnabled(true);
    m_edit->addAction(QIcon::fromTheme(QStringLiteral("edit-find")), QLineEdit::LeadingPosition);
    m_edit->setToolTip(withShortcut(tr("Поиск")));
    m_edit->installEventFilter(this);
    setFocusProxy(m_edit);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);

    m_advanced->setObjectName(QStringLiteral("advancedSearchButton"));
    m_advanced->setText(QStringLiteral("…"));
    m_advanced->setToolTip(tr("Расширенный поиск"));
    m_advanced->setAccessibleName(m_advanced->toolTip());
    m_advanced->setAutoRaise(true);

    updateMinimumWidth();

    auto *shortcut = new QShortcut(QKeySequence::Find, this);
    connect(shortcut, &QShortcut::activated, this, &SearchWidget::focusEdit);
    connect(m_edit, &QLineEdit::textChanged, this, &SearchWidget::startSearch);
    connect(m_advanced, &QToolButton::clicked, this, &SearchWidget::advancedClicked);
}

QString SearchWidget::text() const
{
    return m_edit->text();
}

QString SearchWidget::placeholderText() const
{
    return m_edit->placeholderText();
}

void SearchWidget::setPlaceholderText(const QString &text)
{
    m_edit->setPlaceholderText(text);
    m_edit->setAccessibleName(text);
    // A narrow field cannot show the whole text.
    m_edit->setToolTip(withShortcut(text.isEmpty() ? tr("Поиск") : text));
}

bool SearchWidget::isAdvancedButtonVisible() const
{
    return !m_advanced->isHidden();
}

void SearchWidget::setAdvancedButtonVisible(bool visible)
{
    m_advanced->setVisible(visible);
}

void SearchWidget::setText(const QString &text)
{
    m_edit->setText(text);
}

void SearchWidget::clear()
{
    m_edit->clear();
}

void SearchWidget::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange)
        updateMinimumWidth();
}

bool SearchWidget::eventFilter(QObject *watched, QEvent *event)
{
    // In an empty field, Escape is for the window.
    const bool key = event->type() == QEvent::KeyPress || event->type() == QEvent::ShortcutOverride;
    if (!key || watched != m_edit || m_edit->text().isEmpty())
        return QWidget::eventFilter(watched, event);
    auto *keyEvent = static_cast<QKeyEvent *>(event);
    if (keyEvent->key() != Qt::Key_Escape || keyEvent->modifiers() != Qt::NoModifier)
        return QWidget::eventFilter(watched, event);
    if (event->type() == QEvent::KeyPress)
        clear();
    event->accept();
    return true;
}

void SearchWidget::updateMinimumWidth()
{
    // Space for one word; a wide tool bar beside the field moves its last actions into the overflow menu.
    m_edit->setMinimumWidth(fontMetrics().averageCharWidth() * 14);
}

void SearchWidget::focusEdit()
{
    m_edit->setFocus(Qt::ShortcutFocusReason);
    m_edit->selectAll();
}
