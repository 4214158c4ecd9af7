#pragma once

#include <QByteArray>
#include <QVector>

#include <cstddef>
#include <cstdint>

// A fuzz target tests one reader of untrusted bytes. Built with clang and the sanitizers it is a libFuzzer program;
// otherwise driver.cpp mutates the seeds.

/// Reads an input; aborts if the reader violates an invariant.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size);
/// Called once, before the first input.
extern "C" int LLVMFuzzerInitialize(int *argc, char ***argv);

/// Valid inputs to start from.
[[nodiscard]] QVector<QByteArray> fuzzSeeds();

namespace fuzz {

/// The number of inputs that were accepted as valid.
extern qint64 accepted;

/// Ends the program if \a holds is false.
inline void require(bool holds, const char *invariant)
{
    if (!holds)
        qFatal("violated invariant: %s", invariant);
}

/// Discards all log messages except fatal ones.
void silenceLogging();

/// Splits an input into the number of one of the target's \a count readers and the bytes for it. Returns false if the
/// input is empty or too long.
[[nodiscard]] bool split(const uint8_t *data, size_t size, int count, int &reader, QByteArray &rest);
/// Seeds for `split`, one input for each reader in order.
[[nodiscard]] QVector<QByteArray> numbered(const QVector<QByteArray> &inputs);

/// The initialization of a target without an application object.
int initialize();

/// Writes the seeds as files, from which libFuzzer starts, if the environment variable ORVEX_FUZZ_SEEDS names a folder.
void writeSeeds();

} // namespace fuzz
