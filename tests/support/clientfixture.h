#pragma once

#include "client.h"
#include "operator.h"
#include "storefixture.h"

#include <QDialog>
#include <QTableView>

#include <functional>
#include <memory>

/// The running client with the page of the schedules, on a store of its own.
class ClientFixture
{
public:
    ClientFixture();

    [[nodiscard]] Client &client() const { return *m_client; }
    [[nodiscard]] QWidget &window() const { return m_client->window(); }
    [[nodiscard]] QTableView *table() const { return window().findChild<QTableView *>("scheduleView"); }

    /// Opens the editor of a listed schedule and runs the steps in it; rejects it if they leave it open.
    void edit(const Operator &person, const std::function<void(QDialog &)> &steps, int row = 0) const;

    StoreFixture store;

private:
    QTemporaryDir m_settings;
    std::unique_ptr<Client> m_client;
};
