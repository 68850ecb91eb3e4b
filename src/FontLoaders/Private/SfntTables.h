#pragma once

#include <FontLoaders/Private/BigEndianBytes.h>

#include <cstdint>

namespace Vell::FontLoaders::Internal {

/// Where a table lies in a file.
struct TablePlace {
    std::uint32_t offset = 0;
    std::uint32_t length = 0; ///< 0 for a table that FreeType does not find
};

/// The table that FreeType takes for the first face of an SFNT file or collection: of all entries of this
/// name that lie within the file the first one. The place lies within the file, too.
TablePlace findTable(const BigEndianBytes& file, std::uint32_t tag);

} // namespace Vell::FontLoaders::Internal
