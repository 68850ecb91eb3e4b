#pragma once

namespace Vell::FontEngine {

class BitmapGlyphInfo;
class GlyphInfo;

namespace Internal {

class RunServices;

/// Proof that a run of glyphs is being laid out: the constructors that take it build a key in its place and
/// take over the caller's reference to the description, where others count one more. Closed for everybody
/// else.
class RunAccessTag {
    friend class FontEngine::BitmapGlyphInfo;
    friend class FontEngine::GlyphInfo;
    friend class RunServices;

    // User-provided, or `RunAccessTag{}` would be aggregate initialisation and open to all.
    explicit RunAccessTag() {} // NOLINT(modernize-use-equals-default)
};

} // namespace Internal

} // namespace Vell::FontEngine
