#pragma once

#include "scheduledata.h"
#include "shiftguidefixture.h"

/// A small organisation with its shift guide, put into the local storage in place of what was there.
namespace organisation {

constexpr quint32 Root = 1;
constexpr quint32 Firm = 2;
constexpr quint32 Office = 3;
constexpr quint32 Plant = 4;
constexpr quint32 Ivanova = 20; ///< in the office; number "0017", main schedule 7
constexpr quint32 Petrov = 21; ///< in the plant; number "0042", no main schedule
constexpr quint32 Markup = 22; ///< in the plant; the name looks like markup, the main schedule is none that is known
constexpr quint32 Gone = 23; ///< in the plant; deleted
constexpr int MainSchedule = 7;

inline orvex::ObjectInfo unit(quint32 id, QLatin1String type, const QString &name, quint32 parent = 0)
{
    orvex::ObjectInfo object{type, id, {{db::param::NAME, name}}};
    if (parent != 0)
        object.parameters.insert(db::param::PARENT, QString::number(parent));
    return object;
}

inline orvex::ObjectInfo employee(quint32 id, const QString &name, const QString &number, quint32 unit,
                                  const QString &mainSchedule = {}, const QString &state = {})
{
    auto object = scheduledata::worker(id, name, number, state);
    object.parameters.insert(db::param::PARENT, QString::number(unit));
    object.parameters.insert(db::param::SCHEDULE, mainSchedule);
    return object;
}

/// An employee is an object of its own and a leaf of the organisation's tree.
inline void storeEmployees(const QList<orvex::ObjectInfo> &employees, const QList<quint32> &removed = {})
{
    orvex::StorageChange change;
    for (const auto &name : {orvex::SUBJECT_DATANAME, orvex::ORGSTRUCTURE_DATANAME}) {
        for (const auto &object : employees)
            change.objects[name].insert(object.id, object);
        if (!removed.isEmpty())
            change.removedObjects[name] = removed;
    }
    orvex::LocalStorage::instance()->apply(change);
}

inline void fill()
{
    scheduledata::emptyStorage();
    guide::fill();
    orvex::StorageChange change;
    using namespace db::orgstructure;
    for (const auto &object : {unit(Root, SUBJECTROOT, QStringLiteral("Организация")),
                               unit(Firm, FIRM, QStringLiteral("ООО «Ромашка»"), Root),
                               unit(Office, DEPARTMENT, QStringLiteral("Бухгалтерия"), Firm),
                               unit(Plant, DEPARTMENT, QStringLiteral("Цех 2"), Firm)})
        change.objects[orvex::ORGSTRUCTURE_DATANAME].insert(object.id, object);
    orvex::LocalStorage::instance()->apply(change);
    storeEmployees({employee(Ivanova, QStringLiteral("Иванова Мария"), QStringLiteral("0017"), Office,
                             QString::number(MainSchedule)),
                    employee(Petrov, QStringLiteral("Петров Пётр"), QStringLiteral("0042"), Plant),
                    employee(Markup, QStringLiteral("<b>Сидоров</b> & Ко"), QStringLiteral("<i>7</i>"), Plant,
                             QStringLiteral("99")),
                    employee(Gone, QStringLiteral("Яшин Олег"), {}, Plant, {}, QStringLiteral("d"))});
    scheduledata::store({scheduledata::schedule(MainSchedule, QStringLiteral("Сменный 2/2"), orvex::ScheduleShift)});
}

} // namespace organisation
