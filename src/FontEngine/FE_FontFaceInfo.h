#pragma once

#include <Gfx/Public/FontFaceInfo.h>
#include <Utils/Public/Export.h>
#include <Utils/Public/Vtable.h>

#include <string>

namespace Vell::FontEngine::Internal {

/// Describes a face: family, bold and italic, stored by value. Immutable.
///
///     const auto face = Vell::makeNNPtr<const FontFaceInfo>("DejaVu Sans", false, true);
class VELL_API FontFaceInfo : public Gfx::FontFaceInfo {
public:
    /// `name` is the family in UTF-8. The empty string means the loader's default face.
    FontFaceInfo(std::string name, bool bold, bool italic);
    ~FontFaceInfo() override;

    std::string getName() const override;
    bool isBold() const override;
    bool isItalic() const override;

    /// Compares the stored values without calling virtual functions and without copying names.
    bool holdsSameAs(const FontFaceInfo& other) const {
        return this == &other || (_name == other._name && _bold == other._bold && _italic == other._italic);
    }

    /// Returns whether `info` has exactly this class, not a derived one, so that its accessors return the
    /// stored values. Works for classes compiled without type information, too.
    static bool isExactly(const Gfx::FontFaceInfo& info) { return getVtable(info) == _ownVtable; }

private:
    static const void* const _ownVtable; ///< null until the library's static initialisation

    std::string _name;
    bool _bold;
    bool _italic;
};

} // namespace Vell::FontEngine::Internal
