#include "schedulemodel.h"

#include "localstorage.h"
#include "rowruns.h"
#include "tqglobals.h"

#include <QLocale>
#include <QSet>

#include <algorithm>
#include <numeric>

namespace {

const orvex::ObjectHash &employees()
{
    static const QString dataName = orvex::SUBJECT_DATANAME;
    return *orvex::LocalStorage::instance()->constObjects(dataName);
}

QString employeeNumber(const orvex::ObjectInfo &employee)
{
    static const QString name = db::param::WORKERNUM;
    return employee.parameter(name);
}

bool isPresent(const orvex::ObjectInfo &employee)
{
    return !employee.isNull() && !TQGlobals::isDeleted(employee);
}

} // namespace

ScheduleModel::ScheduleModel(QObject *parent)
    : QAbstractItemModel(parent)
    , m_scheduleIcon(QIcon::fromTheme(QStringLiteral("plugin-schedule")))
    , m_employeeIcon(QIcon::fromTheme(QStringLiteral("object-OT_WORKER")))
    , m_missingEmployeeIcon(QIcon::fromTheme(QStringLiteral("object-OT_WORKER-d")))
{
    const auto storage = orvex::LocalStorage::instance();
    connect(storage, &orvex::LocalStorage::objectChanged, this, &ScheduleModel::onObjectsChanged);
    // The storage signals a removal while the object still exists. Queued, the slot runs after the removal.
    connect(storage, &orvex::LocalStorage::objectRemoved, this, &ScheduleModel::onObjectsChanged, Qt::QueuedConnection);
}

QModelIndex ScheduleModel::index(int row, int column, const QModelIndex &parent) const
{
    return hasIndex(row, column, parent) ? createIndex(row, column) : QModelIndex();
}

QModelIndex ScheduleModel::parent(const QModelIndex &) const
{
    return {};
}

int ScheduleModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_records.size());
}

int ScheduleModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant ScheduleModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || index.row() >= rowCount() || index.column() >= ColumnCount)
        return {};
    const auto &record = recordAt(index.row());
    switch (role) {
    case Qt::DisplayRole:
        return displayValue(record, index.column());
    case SortRole:
        return index.column() == PeriodColumn ? QVariant(record.startDate) : displayValue(record, index.column());
    case Qt::DecorationRole:
        return decoration(record, index.column());
    default:
        return {};
    }
}

QVariant ScheduleModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    switch (section) {
    case ColorColumn:
        return QString();
    case NameColumn:
        return tr("Название");
    case TypeColumn:
        return tr("Тип графика");
    case EmployeeColumn:
        return tr("ФИО");
    case NumberColumn:
        return tr("Табельный номер");
    case PeriodColumn:
        return tr("Период");
    default:
        return {};
    }
}

Qt::ItemFlags ScheduleModel::flags(const QModelIndex &index) const
{
    return index.isValid() ? Qt::ItemIsSelectable | Qt::ItemIsEnabled : Qt::NoItemFlags;
}

int ScheduleModel::row(int id) const
{
    if (id == -1)
        return -1;
    if (!m_isIdIndexValid) {
        m_idIndex.clear();
        m_idIndex.reserve(m_records.size());
        for (int row = 0; row < rowCount(); ++row)
            m_idIndex.insert(recordAt(row).id, row);
        m_isIdIndexValid = true;
    }
    return m_idIndex.find(id);
}

int ScheduleModel::row(const orvex::SCHEDULE_DATA &record) const
{
    return row(record.id);
}

orvex::SCHEDULE_DATA ScheduleModel::record(int row) const
{
    return row >= 0 && row < rowCount() ? recordAt(row) : orvex::SCHEDULE_DATA();
}

bool ScheduleModel::insertRecord(int row, const orvex::SCHEDULE_DATA &record)
{
    row = qBound(0, row, rowCount());
    beginInsertRows({}, row, row);
    m_records.insert(m_records.begin() + row, record);
    m_names.insert(row, record.name);
    if (row == rowCount() - 1 && m_isIdIndexValid)
        m_idIndex.insert(record.id, row);
    else
        m_isIdIndexValid = false;
    endInsertRows();
    return true;
}

bool ScheduleModel::removeRecord(int row)
{
    if (row < 0 || row >= rowCount())
        return false;
    removeListed({row});
    return true;
}

bool ScheduleModel::updateRecord(const orvex::SCHEDULE_DATA &record)
{
    if (row(record) < 0)
        return false;
    update({&record});
    return true;
}

ScheduleModel::Stored ScheduleModel::storeRecords(const Records &records)
{
    Stored stored;
    Records added;
    Records changed;
    if (m_records.empty())
        m_idIndex.reserve(records.size());
    for (const auto *record : records) {
        const int found = row(*record);
        if (found < 0) {
            m_idIndex.insert(record->id, rowCount() + int(added.size()));
            added.push_back(record);
            stored.lastAppended = record->id;
        } else if (found >= rowCount()) {
            added[found - rowCount()] = record;
        } else {
            changed.push_back(record);
        }
    }
    stored.appended = int(added.size());
    stored.updated = int(changed.size());
    // In this order: the proxy merges the new rows into sorted ones, so the old records must still be unchanged.
    append(added);
    update(changed);
    return stored;
}

int ScheduleModel::removeRecords(const QList<quint32> &ids)
{
    std::vector<int> rows;
    for (const quint32 id : ids) {
        const int found = row(int(id));
        if (found >= 0)
            rows.push_back(found);
    }
    scheduleview::sortUnique(rows);
    removeListed(rows);
    return int(rows.size());
}

QVariant ScheduleModel::displayValue(const orvex::SCHEDULE_DATA &record, int column) const
{
    switch (column) {
    case ColorColumn:
        return record.color;
    case NameColumn:
        return record.name;
    case TypeColumn:
        return int(record.type);
    case EmployeeColumn:
        return TQGlobals::objectName(employees().value(record.workerId));
    case NumberColumn:
        return employeeNumber(employees().value(record.workerId));
    case PeriodColumn:
        return QLocale().toString(record.startDate, QStringLiteral("MMMM yyyy"));
    default:
        return {};
    }
}

QVariant ScheduleModel::decoration(const orvex::SCHEDULE_DATA &record, int column) const
{
    if (column == NameColumn)
        return m_scheduleIcon;
    if (column == EmployeeColumn)
        return isPresent(employees().value(record.workerId)) ? m_employeeIcon : m_missingEmployeeIcon;
    return {};
}

const ScheduleModel::FoldedEmployee &ScheduleModel::foldedEmployee(quint32 workerId) const
{
    const auto known = m_employees.constFind(workerId);
    if (known != m_employees.constEnd())
        return *known;
    const auto employee = employees().value(workerId);
    return *m_employees.insert(workerId,
                               {scheduleview::FoldedNames::folded(TQGlobals::objectName(employee)),
                                scheduleview::FoldedNames::folded(employeeNumber(employee))});
}

void ScheduleModel::append(const Records &records)
{
    if (records.empty())
        return;
    // For a small batch the vectors grow by themselves: an exact reservation would copy everything each time.
    if (records.size() > m_records.size()) {
        const auto addSize = [](std::size_t sum, const auto *record) { return sum + std::size_t(record->name.size()); };
        const auto units = std::accumulate(records.cbegin(), records.cend(), std::size_t(0), addSize);
        m_records.reserve(m_records.size() + records.size());
        m_names.reserveMore(records.size(), units);
    }
    beginInsertRows({}, rowCount(), rowCount() + int(records.size()) - 1);
    for (const auto *record : records) {
        m_names.insert(rowCount(), record->name);
        m_records.push_back(*record);
    }
    endInsertRows();
}

void ScheduleModel::update(const Records &records)
{
    std::vector<int> rows;
    rows.reserve(records.size());
    for (const auto *record : records) {
        const int found = row(*record);
        auto &stored = m_records[found];
        if (stored.name != record->name)
            m_names.replace(found, record->name);
        stored = *record;
        rows.push_back(found);
    }
    scheduleview::sortUnique(rows);
    signalChanged(rows, ColorColumn, PeriodColumn);
}

void ScheduleModel::signalChanged(const std::vector<int> &rows, Column first, Column last)
{
    if (rows.empty())
        return;
    scheduleview::forEachRun(rows,
                             [=](int top, int bottom) { emit dataChanged(index(top, first), index(bottom, last)); });
    emit recordsChanged(rows);
}

void ScheduleModel::removeListed(const std::vector<int> &rows)
{
    if (rows.empty())
        return;
    emit recordsAboutToBeRemoved(rows);
    if (rows.back() - rows.front() + 1 == int(rows.size())) {
        beginRemoveRows({}, rows.front(), rows.back());
        erase(rows);
        endRemoveRows();
    } else {
        removeScattered(rows);
    }
    emit recordsRemoved(rows);
}

void ScheduleModel::removeScattered(const std::vector<int> &rows)
{
    emit layoutAboutToBeChanged();
    erase(rows);
    const auto before = persistentIndexList();
    QModelIndexList after;
    after.reserve(before.size());
    for (const QModelIndex &index : before) {
        const auto at = std::lower_bound(rows.cbegin(), rows.cend(), index.row());
        const bool removed = at != rows.cend() && *at == index.row();
        after.append(removed ? QModelIndex() : createIndex(index.row() - int(at - rows.cbegin()), index.column()));
    }
    changePersistentIndexList(before, after);
    emit layoutChanged();
}

void ScheduleModel::erase(const std::vector<int> &rows)
{
    scheduleview::eraseRows(m_records, rows);
    m_names.remove(rows);
    m_isIdIndexValid = false;
}

void ScheduleModel::onObjectsChanged(const QString &dataName, const QList<quint32> &ids)
{
    if (dataName != orvex::SUBJECT_DATANAME)
        return;
    QSet<quint32> changed;
    for (const quint32 id : ids) {
        m_employees.remove(id);
        changed.insert(id);
    }
    std::vector<int> rows;
    for (int row = 0; row < rowCount(); ++row) {
        const quint32 workerId = recordAt(row).workerId;
        if (workerId != 0 && changed.contains(workerId))
            rows.push_back(row);
    }
    signalChanged(rows, EmployeeColumn, NumberColumn);
}
