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

QByteArray validDocument()
{
    ScratchStore scratch;
    scratch.fill();
    return dumped(scratch.database);
}

} // namespace

QVector<QByteArray> fuzzSeeds()
{
    static const QByteArray valid = validDocument();
    return {valid, QByteArray(valid).replace("\n", "").replace("  ", "")};
}

extern "C" int LLVMFuzzerInitialize(int *, char ***)
{
    return fuzz::initialize();
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static ScratchStore scratch;
    static const QByteArray empty = dumped(scratch.database);
    QByteArray document(reinterpret_cast<const char *>(data), int(size));
    QBuffer buffer(&document);
    buffer.open(QIODevice::ReadOnly);
    const auto outcome = scratch.database.load(buffer);
    if (!outcome.ok()) {
        fuzz::require(outcome.code == ResultInvalidData,
                      "an invalid document is not reported as a failure of the store");
        fuzz::require(!outcome.text.isEmpty(), "a rejected document is reported with a text");
        fuzz::require(dumped(scratch.database) == empty, "a rejected document loads nothing");
        return 0;
    }
    ++fuzz::accepted;
    QList<store::Fault> faults;
    fuzz::require(scratch.database.check(faults).ok() && faults.isEmpty(), "a loaded document has no faults");
    scratch.recreate();
    return 0;
}
