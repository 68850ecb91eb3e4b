#include <FontEngine/FE_FontFaceInfo.h>

#include <utility>

namespace Vell::FontEngine::Internal {

const void* const FontFaceInfo::_ownVtable = getVtable(FontFaceInfo("", false, false));

FontFaceInfo::FontFaceInfo(std::string name, bool bold, bool italic)
    : _name(std::move(name))
    , _bold(bold)
    , _italic(italic) {}

FontFaceInfo::~FontFaceInfo() = default;

std::string FontFaceInfo::getName() const {
    return _name;
}

bool FontFaceInfo::isBold() const {
    return _bold;
}

bool FontFaceInfo::isItalic() const {
    return _italic;
}

} // namespace Vell::FontEngine::Internal
