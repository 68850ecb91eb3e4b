#pragma once

namespace Vell::FontEngine {
class FontFace;
class FontFactory;
} // namespace Vell::FontEngine

namespace Vell::Gfx {

/// Proof that an object is being built by the font factory or one of its faces: constructors that take it are
/// public for std::make_shared and closed for everybody else.
class FactoryAccessTag {
    friend class Vell::FontEngine::FontFace;
    friend class Vell::FontEngine::FontFactory;

    // User-provided, or `FactoryAccessTag{}` would be aggregate initialisation and open to all.
    explicit FactoryAccessTag() {} // NOLINT(modernize-use-equals-default)
};

} // namespace Vell::Gfx
