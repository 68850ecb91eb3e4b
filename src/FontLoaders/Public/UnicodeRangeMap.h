#pragma once

#include <Utils/Public/Export.h>

namespace Vell::FontLoaders {

/// Numbers the blocks of Unicode, for FontLoader::getFamilyNameForRange. Any thread may call.
class VELL_API UnicodeRangeMap {
public:
    /// The identifier of the block that contains the code point, or 0. Identifiers may change with every
    /// version of this library, so do not store them.
    static unsigned int find(unsigned int codePoint);
};

} // namespace Vell::FontLoaders
