#pragma once

namespace Vell::Tool {

/// A block of Unicode: its codes, both ends included.
struct NamedBlock {
    unsigned int first;
    unsigned int last;
    const char* name;
};

/// The block that holds a code point. Codes between blocks get a block of their own, which reaches to the
/// next one and is named "No block".
NamedBlock findNamedBlock(unsigned int codePoint);

} // namespace Vell::Tool
