#pragma once

#include <Gfx/Public/FontFaceInfo.h>
#include <Utils/Public/Export.h>
#include <Utils/Public/Vtable.h>

#include <string>

namespace Vell::FontEngine::Internal {

/// A face description that holds its values.
///
///     const auto face = Vell::makeNNPtr<const FontFaceInfo>("DejaVu Sans", false, true);
class VELL_API FontFaceInfo : public Gfx::FontFaceInfo {
public:
    /// `name` is the family in UTF-8; the empty string is legal and means the loader's default face.
    FontFaceInfo(std::string name, bool bold, bool italic);
    ~FontFaceInfo() override;

    std::string getName() const override;
    bool isBold() const override;
    bool isItalic() const override;

    /// Whether both hold the same values, whatever the accessors of a derived class answer. Copies no name.
    bool holdsSameAs(const FontFaceInfo& other) const {
        return this == &other || (_name == other._name && _bold == other._bold && _italic == other._italic);
    }

    /// Whether the accessors of `info` answer what it holds: whether it is of this class and of no derived
    /// one. It may be of a class without type information.
    static bool isExactly(const Gfx::FontFaceInfo& info) { return getVtable(info) == _ownVtable; }

private:
    static const void* const _ownVtable; ///< null until this library is initialised

    std::string _name;
    bool _bold;
    bool _italic;
};

} // namespace Vell::FontEngine::Internal
