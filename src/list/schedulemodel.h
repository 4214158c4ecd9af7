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
/// A row is found through an index kept beside the list, and a batch is announced once. The employees' names and
/// numbers are the local storage's; a change to them there is announced here as a change of their rows.
class ScheduleModel final : public QAbstractItemModel
{
    Q_OBJECT

public:
    enum Column
    {
        ColorColumn,
        NameColumn,
        TypeColumn,
        WorkerColumn,
        NumberColumn,
        PeriodColumn,
        ColumnCount
    };
    enum Role
    {
        SortRole = Qt::UserRole + 1 ///< what the list is sorted by
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

    /// The first row with this identifier; -1 when there is none, and for the identifier -1.
    [[nodiscard]] int row(int id) const;
    [[nodiscard]] int row(const orvex::SCHEDULE_DATA &record) const;
    /// A copy; a default-constructed record for a row out of range.
    [[nodiscard]] orvex::SCHEDULE_DATA record(int row) const;
    bool insertRecord(int row, const orvex::SCHEDULE_DATA &record);
    bool removeRecord(int row);
    bool updateRecord(const orvex::SCHEDULE_DATA &record);

    /// Updates the row of each record whose identifier has one and appends the others, in order: as one insertion and
    /// one announcement of the changed rows.
    Stored storeRecords(const Records &records);
    /// Removes the rows of these identifiers and says how many there were. Rows that lie in one piece go as one
    /// removal, scattered ones as one layout change.
    int removeRecords(const QList<quint32> &ids);

    // Without checks and copies, for the proxy.
    [[nodiscard]] const orvex::SCHEDULE_DATA &recordAt(int row) const { return m_records[row]; }
    [[nodiscard]] QStringView foldedName(int row) const { return m_names.at(row); }
    /// The employee's name and number, case-folded; as of the last signal about them.
    [[nodiscard]] QString foldedWorkerName(quint32 workerId) const { return worker(workerId).name; }
    [[nodiscard]] QString foldedWorkerNumber(quint32 workerId) const { return worker(workerId).number; }
    [[nodiscard]] bool isNamedWorker(quint32 workerId) const { return !worker(workerId).name.isEmpty(); }

signals:
    // For the proxy, beside the model's own signals: whole batches, their rows ascending and distinct.
    void recordsChanged(const std::vector<int> &rows);
    void recordsAboutToBeRemoved(const std::vector<int> &rows);
    void recordsRemoved(const std::vector<int> &rows);

private:
    struct Worker
    {
        QString name;
        QString number;
    };

    [[nodiscard]] QVariant displayValue(const orvex::SCHEDULE_DATA &record, int column) const;
    [[nodiscard]] QVariant decoration(const orvex::SCHEDULE_DATA &record, int column) const;
    [[nodiscard]] const Worker &worker(quint32 workerId) const;
    /// Their identifiers are in the index already.
    void append(const Records &records);
    void update(const Records &records);
    void announceChanged(const std::vector<int> &rows, Column first, Column last);
    void dropRows(const std::vector<int> &rows);
    void removeScattered(const std::vector<int> &rows);
    void erase(const std::vector<int> &rows);
    void workersChanged(const QString &dataName, const QList<quint32> &ids);

    std::vector<orvex::SCHEDULE_DATA> m_records;
    scheduleview::FoldedNames m_names;
    mutable scheduleview::IdIndex m_index;
    mutable bool m_indexCurrent = true;
    mutable QHash<quint32, Worker> m_workers; ///< folded, filled as they are asked for
    const QIcon m_scheduleIcon;
    const QIcon m_workerIcon;
    const QIcon m_noWorkerIcon;
};
