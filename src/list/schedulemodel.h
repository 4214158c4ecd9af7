#pragma once

#include "foldednames.h"
#include "idindex.h"
#include "schedules.h"

#include <QAbstractItemModel>
#include <QHash>
#include <QIcon>

#include <vector>

/// The flat list of schedules: owned copies of the records, in insertion order.
///
/// An index finds the row of an identifier, and a batch of changes is signalled once. The names and numbers of
/// employees are read from the local storage; when they change there, the model signals a change of their rows.
class ScheduleModel final : public QAbstractItemModel
{
    Q_OBJECT

public:
    enum Column
    {
        ColorColumn,
        NameColumn,
        TypeColumn,
        EmployeeColumn,
        NumberColumn,
        PeriodColumn,
        ColumnCount
    };
    enum Role
    {
        SortRole = Qt::UserRole + 1 ///< the value to sort by
    };
    using Records = std::vector<const orvex::SCHEDULE_DATA *>;

    /// What `storeRecords` did.
    struct Stored
    {
        int appended = 0;
        int updated = 0;
        qint32 lastAppended = 0; ///< identifier of the last record that got a new row
    };

    explicit ScheduleModel(QObject *parent = nullptr);

    [[nodiscard]] QModelIndex index(int row, int column, const QModelIndex &parent = {}) const override;
    [[nodiscard]] QModelIndex parent(const QModelIndex &child) const override;
    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation,
                                      int role = Qt::DisplayRole) const override;
    [[nodiscard]] Qt::ItemFlags flags(const QModelIndex &index) const override;

    /// Returns the first row with this identifier; -1 if there is none, and always for the identifier -1.
    [[nodiscard]] int row(int id) const;
    [[nodiscard]] int row(const orvex::SCHEDULE_DATA &record) const;
    /// Returns a copy; a default-constructed record for a row out of range.
    [[nodiscard]] orvex::SCHEDULE_DATA record(int row) const;
    bool insertRecord(int row, const orvex::SCHEDULE_DATA &record);
    bool removeRecord(int row);
    bool updateRecord(const orvex::SCHEDULE_DATA &record);

    /// Updates the rows of the records whose identifiers are in the list and appends the others in order. Signals one
    /// insertion and one batch of changed rows.
    Stored storeRecords(const Records &records);
    /// Removes the rows of these identifiers and returns their number. Consecutive rows are signalled as one removal,
    /// scattered ones as one layout change.
    int removeRecords(const QList<quint32> &ids);

    // For the proxy: without range checks and copies.
    [[nodiscard]] const orvex::SCHEDULE_DATA &recordAt(int row) const { return m_records[row]; }
    [[nodiscard]] QStringView foldedName(int row) const { return m_names.at(row); }
    /// Case-folded name and number of an employee, as they were at the last signal about their rows.
    [[nodiscard]] QString foldedEmployeeName(quint32 workerId) const { return foldedEmployee(workerId).name; }
    [[nodiscard]] QString foldedEmployeeNumber(quint32 workerId) const { return foldedEmployee(workerId).number; }
    [[nodiscard]] bool hasEmployeeName(quint32 workerId) const { return !foldedEmployee(workerId).name.isEmpty(); }

signals:
    // For the proxy, in addition to the standard signals: whole batches of ascending, distinct rows.
    void recordsChanged(const std::vector<int> &rows);
    void recordsAboutToBeRemoved(const std::vector<int> &rows);
    void recordsRemoved(const std::vector<int> &rows);

private:
    struct FoldedEmployee
    {
        QString name;
        QString number;
    };

    [[nodiscard]] QVariant displayValue(const orvex::SCHEDULE_DATA &record, int column) const;
    [[nodiscard]] QVariant decoration(const orvex::SCHEDULE_DATA &record, int column) const;
    [[nodiscard]] const FoldedEmployee &foldedEmployee(quint32 workerId) const;
    /// The index already contains the identifiers of \a records.
    void append(const Records &records);
    void update(const Records &records);
    void signalChanged(const std::vector<int> &rows, Column first, Column last);
    void removeListed(const std::vector<int> &rows);
    void removeScattered(const std::vector<int> &rows);
    void erase(const std::vector<int> &rows);
    void onObjectsChanged(const QString &dataName, const QList<quint32> &ids);

    std::vector<orvex::SCHEDULE_DATA> m_records;
    scheduleview::FoldedNames m_names;
    mutable scheduleview::IdIndex m_idIndex;
    mutable bool m_isIdIndexValid = true;
    mutable QHash<quint32, FoldedEmployee> m_employees; ///< a cache, filled on demand
    const QIcon m_scheduleIcon;
    const QIcon m_employeeIcon;
    const QIcon m_missingEmployeeIcon;
};
