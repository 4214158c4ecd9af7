#include "personalemployeewizardpage.h"

#include "localstorage.h"
#include "objecttreemodel.h"
#include "objecttreeproxy.h"
#include "styleditemdelegate.h"
#include "ui_personalemployeewizardpage.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QVBoxLayout>
#include <QWizard>

using orvex::ObjectTreeModel;

namespace {

bool isEmployee(const QModelIndex &index)
{
    return index.siblingAtColumn(ObjectTreeModel::TypeColumn).data().toString() == db::orgstructure::WORKER;
}

/// The first employee in the order of the tree.
QModelIndex firstEmployee(const QAbstractItemModel &model, const QModelIndex &parent = {})
{
    for (int row = 0; row < model.rowCount(parent); ++row) {
        const QModelIndex index = model.index(row, ObjectTreeModel::IdColumn, parent);
        const QModelIndex found = isEmployee(index) ? index : firstEmployee(model, index);
        if (found.isValid())
            return found;
    }
    return {};
}

} // namespace

PersonalEmployeeWizardPage::PersonalEmployeeWizardPage(QWidget *parent)
    : TQWizardPage(parent)
    , m_ui(std::make_unique<Ui::PersonalEmployeeWizardPage>())
    , m_proxy(new ObjectTreeProxy(this))
{
    m_ui->setupUi(this);
    // Aligns the field with the tree.
    m_ui->searchWidget->layout()->setContentsMargins(0, 0, 0, 0);
    initModel();
    initView();
    connect(m_ui->searchWidget, &SearchWidget::startSearch, this, &PersonalEmployeeWizardPage::startSearch);
    m_ui->searchWidget->focusProxy()->installEventFilter(this);
    QMetaObject::invokeMethod(this, &PersonalEmployeeWizardPage::startSearch, Qt::QueuedConnection);
}

PersonalEmployeeWizardPage::~PersonalEmployeeWizardPage() = default;

quint32 PersonalEmployeeWizardPage::employeeId() const
{
    const QModelIndexList rows = m_ui->employeeView->selectionModel()->selectedRows(ObjectTreeModel::IdColumn);
    if (rows.size() != 1 || !isEmployee(rows.first()))
        return 0;
    return rows.first().data().toUInt();
}

bool PersonalEmployeeWizardPage::isComplete() const
{
    return employeeId() != 0;
}

void PersonalEmployeeWizardPage::startSearch()
{
    const bool searching = !m_ui->searchWidget->text().trimmed().isEmpty();
    if (searching && !m_searching) {
        m_expanded.clear();
        rememberExpanded({});
    }
    m_proxy->setFilter(m_ui->searchWidget->text());
    if (m_proxy->hasFilterResult()) {
        m_ui->employeeView->expandAll();
    } else if (m_searching && !searching) {
        m_ui->employeeView->collapseAll();
        restoreExpanded({});
    }
    m_searching = searching;
    showSelection();
    updateHint();
    // The search removes a selected row without a signal of the selection.
    emit completeChanged();
}

bool PersonalEmployeeWizardPage::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() != QEvent::KeyPress)
        return TQWizardPage::eventFilter(watched, event);
    auto *key = static_cast<QKeyEvent *>(event);
    const bool handled = watched == m_ui->employeeView ? handleTreeKey(key) : handleSearchKey(*key);
    return handled || TQWizardPage::eventFilter(watched, event);
}

void PersonalEmployeeWizardPage::initModel()
{
    using namespace db::orgstructure;
    m_proxy->setSourceModel(orvex::LocalStorage::instance()->model(orvex::ORGSTRUCTURE_DATANAME));
    m_proxy->setIdFilter({});
    m_proxy->setSearchIndex(orvex::ORGSTRUCTURE_DATANAME);
    m_proxy->setSortRole(ObjectTreeModel::SortRole);
    m_proxy->setReadOnly(true);
    m_proxy->setSearchEnabled(true);
    m_proxy->setTypeFilter({SUBJECTROOT, FIRM, DEPARTMENT, WORKER});
    // Connected before the view, which would select the neighbour of a removed employee.
    connect(m_proxy, &ObjectTreeProxy::rowsAboutToBeRemoved, this, &PersonalEmployeeWizardPage::deselectRemoved);
    connect(m_proxy, &ObjectTreeProxy::rowsInserted, this, &PersonalEmployeeWizardPage::updateHint);
    connect(m_proxy, &ObjectTreeProxy::rowsRemoved, this, &PersonalEmployeeWizardPage::updateHint);
    connect(m_proxy, &ObjectTreeProxy::searchedAgain, this, &PersonalEmployeeWizardPage::startSearch);
}

void PersonalEmployeeWizardPage::initView()
{
    auto *view = m_ui->employeeView;
    auto *delegate = new StyledItemDelegate(view);
    delegate->setMargins(0, 0, 0, 0);
    view->setItemDelegate(delegate);
    view->setModel(m_proxy);
    // Connected after the view, which collapses everything when its model is reset.
    connect(m_proxy, &ObjectTreeProxy::modelReset, this, &PersonalEmployeeWizardPage::openTree);
    view->sortByColumn(ObjectTreeModel::IdColumn, Qt::AscendingOrder);
    view->hideColumn(ObjectTreeModel::TypeColumn);
    openTree();
    view->installEventFilter(this);
    connect(view->selectionModel(), &QItemSelectionModel::selectionChanged, this, &QWizardPage::completeChanged);
    connect(view, &QTreeView::doubleClicked, this, [this] {
        if (isComplete())
            wizard()->next();
    });
    // The hint is centred in the area of the rows.
    auto *layout = new QVBoxLayout(view->viewport());
    layout->addWidget(m_ui->lbHint, 0, Qt::AlignCenter);
}

void PersonalEmployeeWizardPage::openTree()
{
    m_ui->employeeView->expand(m_proxy->index(0, 0));
    startSearch();
}

void PersonalEmployeeWizardPage::deselectRemoved(const QModelIndex &parent, int first, int last)
{
    auto *view = m_ui->employeeView;
    for (QModelIndex index = view->currentIndex(); index.isValid(); index = index.parent()) {
        if (index.parent() == parent && index.row() >= first && index.row() <= last) {
            view->selectionModel()->clear();
            return;
        }
    }
}

bool PersonalEmployeeWizardPage::handleSearchKey(const QKeyEvent &event)
{
    if (event.key() != Qt::Key_Down)
        return false;
    m_ui->employeeView->setFocus(Qt::OtherFocusReason);
    if (employeeId() == 0)
        chooseFirstEmployee();
    return true;
}

bool PersonalEmployeeWizardPage::handleTreeKey(QKeyEvent *event)
{
    const QString text = event->text();
    const bool typed = !text.isEmpty() && text.at(0).isPrint() && !text.at(0).isSpace()
        && !(event->modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier | Qt::KeypadModifier));
    if (!typed)
        return false;
    // Typing in the tree starts a search: the tree's own key search would compare identifiers.
    QWidget *edit = m_ui->searchWidget->focusProxy();
    edit->setFocus(Qt::OtherFocusReason);
    QCoreApplication::sendEvent(edit, event);
    return true;
}

void PersonalEmployeeWizardPage::chooseFirstEmployee()
{
    const QModelIndex index = firstEmployee(*m_proxy);
    if (index.isValid())
        m_ui->employeeView->setCurrentIndex(index);
}

void PersonalEmployeeWizardPage::rememberExpanded(const QModelIndex &parent)
{
    for (int row = 0; row < m_proxy->rowCount(parent); ++row) {
        const QModelIndex index = m_proxy->index(row, ObjectTreeModel::IdColumn, parent);
        if (!m_ui->employeeView->isExpanded(index))
            continue;
        m_expanded.insert(index.data().toUInt());
        rememberExpanded(index);
    }
}

void PersonalEmployeeWizardPage::restoreExpanded(const QModelIndex &parent)
{
    for (int row = 0; row < m_proxy->rowCount(parent); ++row) {
        const QModelIndex index = m_proxy->index(row, ObjectTreeModel::IdColumn, parent);
        if (!m_expanded.contains(index.data().toUInt()))
            continue;
        m_ui->employeeView->expand(index);
        restoreExpanded(index);
    }
}

void PersonalEmployeeWizardPage::showSelection()
{
    const QModelIndexList rows = m_ui->employeeView->selectionModel()->selectedRows(ObjectTreeModel::IdColumn);
    if (!rows.isEmpty())
        m_ui->employeeView->scrollTo(rows.first());
}

void PersonalEmployeeWizardPage::updateHint()
{
    const bool empty = m_proxy->rowCount() == 0;
    m_ui->lbHint->setText(m_searching ? tr("Ничего не найдено.") : tr("Сотрудников пока нет."));
    m_ui->lbHint->setVisible(empty);
}
