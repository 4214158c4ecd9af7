#pragma once

#include "outcome.h"

class QIODevice;

namespace store {
class Connection;
}

/// The whole of a store as one JSON document; docs/dump.md describes it.
namespace store::dump {

/// Writes one consistent state. The same contents give the same bytes.
[[nodiscard]] Outcome write(Connection &connection, QIODevice &device);

/// Reads a document into an empty store in one transaction. Refused as a whole where it is not such a document, where
/// its rows do not fit their columns, or where they break the rules that `StoreCheck` knows.
[[nodiscard]] Outcome read(Connection &connection, QIODevice &device);

} // namespace store::dump
