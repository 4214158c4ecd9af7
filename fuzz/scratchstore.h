#pragma once

#include "database.h"

#include <QTemporaryDir>

#include <memory>

/// A store that is thrown away, in memory where the system has such a folder: what is tried here is not the disk.
class ScratchStore
{
public:
    ScratchStore();

    /// An empty store, opened.
    void renew();
    /// Puts into the empty store enough for every request and every table of a dump to find something.
    void fill();

    store::Database database;

private:
    std::unique_ptr<QTemporaryDir> m_folder;
};
