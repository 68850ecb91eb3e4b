#pragma once

namespace Vell::Tool {

/// A Unicode block, both ends included.
struct NamedBlock {
    unsigned int first;
    unsigned int last;
    const char* name;
};

/// The block of a code point. Code points between two blocks form a block named "No block".
NamedBlock findNamedBlock(unsigned int codePoint);

} // namespace Vell::Tool
