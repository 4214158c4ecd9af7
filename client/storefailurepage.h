#pragma once

#include "storeaddress.h"

#include <QWidget>

#include <memory>

namespace Ui {
class StoreFailurePage;
}

/// Says why the store cannot be opened, and offers what can be done about it.
class StoreFailurePage final : public QWidget
{
    Q_OBJECT

public:
    explicit StoreFailurePage(QWidget *parent = nullptr);
    ~StoreFailurePage() override;

    /// \a text says what is wrong with \a address. A missing file can be created from here.
    void setFailure(const store::StoreAddress &address, const QString &text);

signals:
    void openRequested(const store::StoreAddress &address);
    void createRequested(const store::StoreAddress &address);
    void chooseRequested();

private:
    std::unique_ptr<Ui::StoreFailurePage> m_ui;
    store::StoreAddress m_address;
};
