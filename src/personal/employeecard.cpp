#include "employeecard.h"

#include "employeeschedules.h"
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
    refresh();
    updatePhoto();
}

EmployeeCard::~EmployeeCard() = default;

void EmployeeCard::setEmployee(quint32 id)
{
    m_employeeId = id;
    refresh();
    updatePhoto();
    QMetaObject::invokeMethod(this, &EmployeeCard::requestPhoto, Qt::QueuedConnection);
}

bool EmployeeCard::isKnown() const
{
    return !LocalStorage::instance()->constObject(m_employeeId, orvex::SUBJECT_DATANAME).isNull();
}

QString EmployeeCard::employeeName() const
{
    return TQGlobals::objectName(LocalStorage::instance()->constObject(m_employeeId, orvex::SUBJECT_DATANAME));
}

void EmployeeCard::setNotice(const QString &text)
{
    if (text == m_notice)
        return;
    m_notice = text;
    updateNotice();
}

void EmployeeCard::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    fitHeight();
}

bool EmployeeCard::event(QEvent *event)
{
    const bool handled = QWidget::event(event);
    const auto type = event->type();
    if (type == QEvent::Show || type == QEvent::FontChange || type == QEvent::StyleChange
        || type == QEvent::PaletteChange) {
        updatePhoto();
        updateNotice();
    }
    return handled;
}

void EmployeeCard::connectStorage()
{
    const auto *storage = LocalStorage::instance();
    const auto onObjects = [this](const QString &dataName, const QList<quint32> &ids) {
        if (dataName == orvex::SUBJECT_DATANAME && ids.contains(m_employeeId))
            refresh();
    };
    const auto onSchedules = [this](const QList<quint32> &ids) {
        if (ids.contains(m_mainScheduleId))
            refresh();
    };
    // A removal is signalled before the record is removed.
    connect(storage, &LocalStorage::objectChanged, this, onObjects);
    connect(storage, &LocalStorage::objectRemoved, this, onObjects, Qt::QueuedConnection);
    connect(storage, &LocalStorage::scheduleChanged, this, onSchedules);
    connect(storage, &LocalStorage::scheduleRemoved, this, onSchedules, Qt::QueuedConnection);
    connect(storage, &LocalStorage::blobStored, this, [this](quint32 id, const QString &name) {
        if (id == m_employeeId && name == db::param::PHOTO)
            updatePhoto();
    });
    connect(storage, &LocalStorage::blobChanged, this, [this](quint32 id, const QString &name) {
        if (id == m_employeeId && name == db::param::PHOTO)
            requestPhoto();
    });
}

void EmployeeCard::refresh()
{
    const auto employee = LocalStorage::instance()->constObject(m_employeeId, orvex::SUBJECT_DATANAME);
    m_mainScheduleId = scheduleview::mainScheduleId(employee);
    m_ui->lbName->setText(tr("ФИО: %1").arg(TQGlobals::objectName(employee)));
    m_ui->lbNumber->setText(tr("Табельный номер: %1").arg(employee.parameter(db::param::WORKERNUM)));
    m_ui->lbMainSchedule->setText(tr("Основной график: %1").arg(scheduleview::mainScheduleName(employee)));
    updateNotice();
    emit employeeChanged();
}

void EmployeeCard::updateNotice()
{
    const auto employee = LocalStorage::instance()->constObject(m_employeeId, orvex::SUBJECT_DATANAME);
    const bool deleted = m_employeeId != 0 && (employee.isNull() || TQGlobals::isDeleted(employee));
    const QString text = deleted ? tr("Сотрудник удалён.") : m_notice;
    const QString icon = deleted ? QStringLiteral("object-OT_WORKER-d") : QStringLiteral("dialog-warning");
    const int side = fontMetrics().height();
    m_ui->lbNoticeIcon->setPixmap(QIcon::fromTheme(icon).pixmap(window()->windowHandle(), {side, side}));
    m_ui->lbNotice->setText(text);
    m_ui->lbNoticeIcon->setHidden(text.isEmpty());
    m_ui->lbNotice->setHidden(text.isEmpty());
    fitHeight();
}

void EmployeeCard::fitHeight()
{
    // A dialog does not follow the height of wrapped lines. The width is not final before the card is visible.
    if (isVisible())
        setMinimumHeight(layout()->totalHeightForWidth(width()));
}

void EmployeeCard::updatePhoto()
{
    const QByteArray photo = LocalStorage::instance()->blob(m_employeeId, db::param::PHOTO);
    m_ui->lbPhoto->setPixmap(PropertyPanelHelper::pixmapByPhotoType(photo, QStringLiteral("PT_PHOTO_PREVIEW")));
}

void EmployeeCard::requestPhoto()
{
    if (m_employeeId != 0)
        emit photoRequest(m_employeeId);
}
