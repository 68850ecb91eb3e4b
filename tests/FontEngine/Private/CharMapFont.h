#pragma once

#include <support/FontBuilder.h>
#include <support/OpenedFont.h>

#include <vector>

namespace Vell::FontEngine::Internal {

/// A font with charmaps of the given kinds. Each maps 'A' (in symbol charmaps U+F041) to glyph 1.
inline Testing::OpenedFont openWithCharMaps(const std::vector<Testing::CharMapKind>& kinds) {
    Testing::FontBuilder builder;
    builder.addGlyph(Testing::makeBoxGlyph(600, 0, 0, 100, 100));
    for (const Testing::CharMapKind kind : kinds) {
        builder.map(kind, kind == Testing::CharMapKind::Symbol ? 0xF041 : 'A', 1);
    }
    return Testing::OpenedFont(builder.build());
}

} // namespace Vell::FontEngine::Internal
