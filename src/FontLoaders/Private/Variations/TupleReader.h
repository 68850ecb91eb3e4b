#pragma once

#include <FontLoaders/Private/FreeTypeBounds/SfntTables.h>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

/// Reads tuples: the parts of a variable font's tables that say by how much numbers change in a region of the
/// axes. All functions throw FontLoaderException where the bytes end too early or are not as they must be.
namespace Vell::FontLoaders::Internal {

/// One for each axis: normalised, of 14 binary places.
using Coordinates = std::vector<int>;

/// Takes numbers from bytes, one after the other.
class TupleCursor {
public:
    TupleCursor(BigEndianBytes bytes, std::uint64_t at)
        : _bytes(bytes)
        , _at(at) {}

    unsigned int takeU8() { return pass(_bytes.u8(_at), 1); }
    unsigned int takeU16() { return pass(_bytes.u16(_at), 2); }
    int takeI8();
    int takeI16();
    Coordinates takeCoordinates(std::size_t axisCount);
    BigEndianBytes takeBytes(std::uint64_t count);

private:
    unsigned int pass(const std::optional<unsigned int>& number, std::uint64_t size);

    BigEndianBytes _bytes;
    std::uint64_t _at;
};

/// The numbers that a tuple changes; nothing means all.
using TupleSelection = std::optional<std::vector<unsigned int>>;

TupleSelection takeSelection(TupleCursor& cursor);

/// The changes of a tuple, one by one, from where the cursor is.
class TupleDeltas {
public:
    explicit TupleDeltas(TupleCursor cursor)
        : _cursor(cursor) {}

    int take();

private:
    TupleCursor _cursor;
    unsigned int _control = 0;
    unsigned int _left = 0; // of the run that the control byte begins
};

/// Where a tuple is felt along each axis.
struct TupleRegion {
    Coordinates peak;
    Coordinates start; ///< empty if it is felt from 0 on
    Coordinates end;

    /// How much of its change is felt at a place: 0 to 1.
    float measure(const Coordinates& place) const;
};

/// What stands in front of the tuples, once for each.
struct TupleHeader {
    unsigned int size; ///< of its data, in bytes
    TupleRegion region;
    bool hasOwnSelection;
};

/// A header with a peak of its own.
TupleHeader takeHeader(TupleCursor& cursor, std::size_t axisCount);

} // namespace Vell::FontLoaders::Internal
