#pragma once

#include "database.h"

#include <QTemporaryDir>

#include <memory>

/// A temporary store, in memory if the system has a folder for that, because the disk is not under test.
class ScratchStore
{
public:
    ScratchStore();

    /// Replaces the store by an empty one and opens it.
    void recreate();
    /// Fills the empty store with records for every request and every table of a dump.
    void fill();

    store::Database database;

private:
    std::unique_ptr<QTemporaryDir> m_folder;
};
