#pragma once

namespace Vell::FontLoaders::Internal {

/// One block of Unicode: code points from `first` to `last`, both included.
struct UnicodeBlock {
    char32_t first;
    char32_t last;
};

/// The blocks in the order of their code points. A block's identifier is its place here, counted from 1.
struct UnicodeBlocks {
    static const UnicodeBlock* begin();
    static const UnicodeBlock* end();

    /// Null for an identifier that no block has.
    static const UnicodeBlock* tryGet(unsigned int identifier);
};

} // namespace Vell::FontLoaders::Internal
