#include "sampleobjects.h"

#include "datanames.h"

namespace support {

namespace {

orvex::ObjectInfo object(quint32 id, const QString &type, const QString &name, quint32 parent)
{
    orvex::ObjectInfo object{type, id, {{db::param::NAME, name}}};
    if (parent != 0)
        object.parameters.insert(db::param::PARENT, QString::number(parent));
    return object;
}

} // namespace

orvex::ObjectInfo root(quint32 id, const QString &name)
{
    return object(id, db::orgstructure::SUBJECTROOT, name, 0);
}

orvex::ObjectInfo firm(quint32 id, const QString &name, quint32 parent)
{
    return object(id, db::orgstructure::FIRM, name, parent);
}

orvex::ObjectInfo department(quint32 id, const QString &name, quint32 parent)
{
    return object(id, db::orgstructure::DEPARTMENT, name, parent);
}

orvex::ObjectInfo employee(quint32 id, const QString &name, const QString &number, quint32 unit)
{
    auto employee = object(id, db::orgstructure::WORKER, name, unit);
    employee.parameters.insert(db::param::WORKERNUM, number);
    return employee;
}

orvex::ObjectInfo deleted(orvex::ObjectInfo object)
{
    object.parameters.insert(db::param::OBJECTSTATE, "d");
    return object;
}

orvex::ObjectInfo guideShift(quint32 id, const QString &code, const QString &name, const QString &intervals)
{
    return {QString(db::guide::SHIFT),
            id,
            {{db::param::CODE, code}, {db::param::NAME, name}, {db::param::INTERVALS, intervals}}};
}

orvex::ObjectInfo guideInterval(quint32 id, int start, int finish)
{
    return {QString(db::guide::INTERVAL),
            id,
            {{db::param::START, QString::number(start)}, {db::param::FINISH, QString::number(finish)}}};
}

} // namespace support
