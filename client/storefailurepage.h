#pragma once

#include "storeaddress.h"

#include <QWidget>

#include <memory>

namespace Ui {
class StoreFailurePage;
}

/// Shows why the store cannot be opened, with buttons to retry, to choose another file or to create the store.
class StoreFailurePage final : public QWidget
{
    Q_OBJECT

public:
    explicit StoreFailurePage(QWidget *parent = nullptr);
    ~StoreFailurePage() override;

    /// \a text: what is wrong with \a address. The button to create a store is shown only for a missing file.
    void setFailure(const store::StoreAddress &address, const QString &text);

signals:
    void openRequested(const store::StoreAddress &address);
    void createRequested(const store::StoreAddress &address);
    void chooseRequested();

private:
    std::unique_ptr<Ui::StoreFailurePage> m_ui;
    store::StoreAddress m_address;
};
