#include "storefailurepage.h"

#include "ui_storefailurepage.h"

#include <QDir>
#include <QFileInfo>

StoreFailurePage::StoreFailurePage(QWidget *parent)
    : QWidget(parent)
    , m_ui(std::make_unique<Ui::StoreFailurePage>())
{
    m_ui->setupUi(this);
    m_ui->failureIcon->setIcon(QStringLiteral("connection-lost"), 2.2);
    m_ui->retryButton->setIcon(QIcon::fromTheme(QStringLiteral("action-refresh")));
    m_ui->chooseButton->setIcon(QIcon::fromTheme(QStringLiteral("document-open")));
    m_ui->createButton->setIcon(QIcon::fromTheme(QStringLiteral("document-new")));
    QFont large = font();
    large.setPointSizeF(large.pointSizeF() * 1.4);
    large.setWeight(QFont::DemiBold);
    m_ui->failureTitle->setFont(large);

    connect(m_ui->retryButton, &QPushButton::clicked, this, [this] { emit openRequested(m_address); });
    connect(m_ui->createButton, &QPushButton::clicked, this, [this] { emit createRequested(m_address); });
    connect(m_ui->chooseButton, &QPushButton::clicked, this, &StoreFailurePage::chooseRequested);
}

StoreFailurePage::~StoreFailurePage() = default;

void StoreFailurePage::setFailure(const store::StoreAddress &address, const QString &text)
{
    m_address = address;
    m_ui->failureText->setText(text);
    m_ui->failurePath->setVisible(!text.contains(address.filePath()));
    m_ui->failurePath->setText(tr("Файл: %1").arg(QDir::toNativeSeparators(address.filePath())));
    m_ui->createButton->setVisible(!QFileInfo::exists(address.filePath()));
    m_ui->retryButton->setFocus();
}
