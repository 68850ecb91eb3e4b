#pragma once

#include <Utils/Public/Export.h>

namespace Vell::FontLoaders {

/// Numbers the blocks of Unicode.
class VELL_API UnicodeRangeMap {
public:
    /// The identifier of the block that holds the code point; 0 when it lies in none. Identifiers are stable
    /// within one version of the library only: do not store them.
    static unsigned int find(unsigned int codePoint);
};

} // namespace Vell::FontLoaders
