#pragma once

#include <QByteArray>
#include <QVector>

#include <cstddef>
#include <cstdint>

// A fuzz target: one reader of foreign bytes. Built with clang and the sanitizers it is a libFuzzer program; otherwise
// driver.cpp mutates the seeds by itself.

/// Reads an input; aborts where a promise of the reader does not hold.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size);
/// Called once, before the first input.
extern "C" int LLVMFuzzerInitialize(int *argc, char ***argv);

/// Good inputs to begin with.
[[nodiscard]] QVector<QByteArray> fuzzSeeds();

namespace fuzz {

/// How many inputs were taken as good ones.
extern qint64 accepted;

/// Ends the program where \a holds is false.
inline void require(bool holds, const char *promise)
{
    if (!holds)
        qFatal("broken promise: %s", promise);
}

/// Drops what the libraries log of odd bytes; what ends the program is still told.
void quiet();

/// The readers of one target are numbered. Splits an input into the number of one of \a count and what it is to read;
/// false for an input that is empty or too long.
[[nodiscard]] bool split(const uint8_t *data, size_t size, int count, int &reader, QByteArray &rest);
/// The seeds that `split` parts again, one for each reader in turn.
[[nodiscard]] QVector<QByteArray> numbered(const QVector<QByteArray> &inputs);

/// What a target without a library of its own begins with.
int begin();

/// Writes the seeds as files where the environment's ORVEX_FUZZ_SEEDS names a folder: libFuzzer starts from files.
void writeSeeds();

} // namespace fuzz
