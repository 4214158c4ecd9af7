#include "employeecard.h"

#include "localstorage.h"
#include "propertypanelhelper.h"
#include "tqglobals.h"
#include "ui_employeecard.h"

#include <QIcon>

using orvex::LocalStorage;

EmployeeCard::EmployeeCard(QWidget *parent)
    : QWidget(parent)
    , m_ui(std::make_unique<Ui::EmployeeCard>())
{
    m_ui->setupUi(this);
    connectStorage();
    update();
    updatePhoto();
}

EmployeeCard::~EmployeeCard() = default;

void EmployeeCard::setEmployee(quint32 id)
{
    m_employee = id;
    update();
    updatePhoto();
    QMetaObject::invokeMethod(this, &EmployeeCard::requestPhoto, Qt::QueuedConnection);
}

bool EmployeeCard::isKnown() const
{
    return !LocalStorage::instance()->constObject(m_employee, orvex::SUBJECT_DATANAME).isNull();
}

QString EmployeeCard::employeeName() const
{
    return TQGlobals::objectName(LocalStorage::instance()->constObject(m_employee, orvex::SUBJECT_DATANAME));
}

void EmployeeCard::connectStorage()
{
    const auto *storage = LocalStorage::instance();
    const auto onObjects = [this](const QString &dataName, const QList<quint32> &ids) {
        if (dataName == orvex::SUBJECT_DATANAME && ids.contains(m_employee))
            update();
    };
    const auto onSchedules = [this](const QList<quint32> &ids) {
        if (ids.contains(m_mainSchedule))
            update();
    };
    // A removal is signalled before the record goes: look when it has gone.
    connect(storage, &LocalStorage::objectChanged, this, onObjects);
    connect(storage, &LocalStorage::objectRemoved, this, onObjects, Qt::QueuedConnection);
    connect(storage, &LocalStorage::scheduleChanged, this, onSchedules);
    connect(storage, &LocalStorage::scheduleRemoved, this, onSchedules, Qt::QueuedConnection);
    connect(storage, &LocalStorage::blobStored, this, [this](quint32 id, const QString &name) {
        if (id == m_employee && name == db::param::PHOTO)
            updatePhoto();
    });
    connect(storage, &LocalStorage::blobChanged, this, [this](quint32 id, const QString &name) {
        if (id == m_employee && name == db::param::PHOTO)
            requestPhoto();
    });
}

void EmployeeCard::update()
{
    const auto *storage = LocalStorage::instance();
    const auto employee = storage->constObject(m_employee, orvex::SUBJECT_DATANAME);
    const auto schedules = storage->schedules();
    m_mainSchedule = employee.parameter(db::param::SCHEDULE).toUInt();
    const auto schedule = schedules.constFind(m_mainSchedule);
    m_ui->lbName->setText(tr("ФИО: %1").arg(TQGlobals::objectName(employee)));
    m_ui->lbNumber->setText(tr("Табельный номер: %1").arg(employee.parameter(db::param::WORKERNUM)));
    m_ui->lbMainSchedule->setText(
        tr("Основной график: %1").arg(schedule == schedules.constEnd() ? tr("<Не назначен>") : schedule->name));

    const bool present = !employee.isNull() && !TQGlobals::isDeleted(employee);
    const int side = fontMetrics().height();
    const QString icon = QStringLiteral("object-OT_WORKER-d");
    m_ui->lbDeletedIcon->setPixmap(QIcon::fromTheme(icon).pixmap(window()->windowHandle(), {side, side}));
    m_ui->lbDeletedIcon->setVisible(!present && m_employee != 0);
    m_ui->lbDeleted->setVisible(!present && m_employee != 0);
    emit employeeChanged();
}

void EmployeeCard::updatePhoto()
{
    const QByteArray photo = LocalStorage::instance()->blob(m_employee, db::param::PHOTO);
    m_ui->lbPhoto->setPixmap(PropertyPanelHelper::pixmapByPhotoType(photo, QStringLiteral("PT_PHOTO_PREVIEW")));
}

void EmployeeCard::requestPhoto()
{
    if (m_employee != 0)
        emit photoRequest(m_employee);
}
