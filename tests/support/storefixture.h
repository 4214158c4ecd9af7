#pragma once

#include "database.h"
#include "samplerecords.h"
#include "storerequest.h"

#include <QTemporaryDir>

/// A new store in a temporary folder, with two employees in a department and two shifts in the guide.
class StoreFixture
{
public:
    quint32 department = 0;
    quint32 employee = 0;
    quint32 otherEmployee = 0;
    quint32 dayShift = 0;
    quint32 nightShift = 0;
    QDateTime time = QDateTime::currentDateTimeUtc(); ///< the current time of the store

    explicit StoreFixture(const QString &engine = "sqlite");

    [[nodiscard]] QString path() const { return m_folder.filePath("store.orvex"); }
    [[nodiscard]] store::StoreAddress address() const { return store::StoreAddress::file(path()); }

    /// Changes the store through another connection.
    void sql(const QString &statement) const;

    /// Adds a schedule; returns it as the client's cache would hold it.
    orvex::SCHEDULE_DATA add(const orvex::SCHEDULE_DATA &record);
    [[nodiscard]] orvex::SCHEDULE_DATA stored(quint32 id);

    store::Database database{[this] { return time; }};

private:
    void fill();

    QTemporaryDir m_folder;
};
