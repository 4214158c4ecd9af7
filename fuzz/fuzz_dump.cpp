#include "scratchstore.h"
#include "target.h"

#include <QBuffer>

// Dump documents.

namespace {

QByteArray dumped(store::Database &database)
{
    QBuffer document;
    document.open(QIODevice::WriteOnly);
    fuzz::require(database.dump(document).ok(), "a store can be dumped");
    return document.data();
}

QByteArray goodDocument()
{
    ScratchStore scratch;
    scratch.fill();
    return dumped(scratch.database);
}

} // namespace

QVector<QByteArray> fuzzSeeds()
{
    static const QByteArray good = goodDocument();
    return {good, QByteArray(good).replace("\n", "").replace("  ", "")};
}

extern "C" int LLVMFuzzerInitialize(int *, char ***)
{
    return fuzz::begin();
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static auto *scratch = new ScratchStore;
    static const QByteArray empty = dumped(scratch->database);
    QByteArray document(reinterpret_cast<const char *>(data), int(size));
    QBuffer buffer(&document);
    buffer.open(QIODevice::ReadOnly);
    const auto outcome = scratch->database.load(buffer);
    if (!outcome.ok()) {
        fuzz::require(outcome.code == ResultInvalidData, "foreign bytes are no fault of the store");
        fuzz::require(!outcome.text.isEmpty(), "a refusal says why");
        fuzz::require(dumped(scratch->database) == empty, "a refused document loads nothing");
        return 0;
    }
    ++fuzz::accepted;
    QList<store::Fault> faults;
    fuzz::require(scratch->database.check(faults).ok() && faults.isEmpty(), "what was loaded has no faults");
    scratch->renew();
    return 0;
}
