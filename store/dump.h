#pragma once

#include "outcome.h"

class QIODevice;

namespace store {
class Connection;
}

/// A store as one JSON document, see docs/dump.md.
namespace store::dump {

/// Writes one consistent state. Stores with equal contents have equal dumps, byte by byte.
[[nodiscard]] Outcome write(Connection &connection, QIODevice &device);

/// Reads a document into an empty store in one transaction. Loads nothing if it is not such a document, if a row does
/// not match its columns, or if `StoreCheck` finds a fault.
[[nodiscard]] Outcome read(Connection &connection, QIODevice &device);

} // namespace store::dump
