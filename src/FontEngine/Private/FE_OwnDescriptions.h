#pragma once

#include <FontEngine/FE_FontDescriptions.h>
#include <Gfx/Public/FontFaceInfo.h>
#include <Gfx/Public/FontInfo.h>
#include <Utils/Public/Ptr/CheckedPtr.h>

namespace Vell::FontEngine::Internal {

/// The description if it is of this library's own kind, or null.
inline const ExtFontInfo* findOwn(const Gfx::ExtFontInfo& extFontInfo) {
    const bool isOwn = ExtFontInfo::isExactly(extFontInfo);
    return isOwn ? static_cast<const ExtFontInfo*>(&extFontInfo) : nullptr;
}

/// The description of the font in it if that is of this library's own kind, too, or null. Asking it calls
/// nothing of a client, so it may be asked once where a client's is asked for every character.
inline const FontInfo* findSilentFontInfo(const ExtFontInfo* own) {
    const bool isSilent = own != nullptr && FontInfo::isExactly(own->viewFontInfo());
    return isSilent ? static_cast<const FontInfo*>(&own->viewFontInfo()) : nullptr;
}

/// The description of the face that stands in such descriptions, or null. It may be of any class itself.
inline const NNPtr<const Gfx::FontFaceInfo>* findSilentFaceInfo(const ExtFontInfo* own) {
    const FontInfo* const fontInfo = findSilentFontInfo(own);
    return fontInfo != nullptr ? &fontInfo->viewFontFaceInfo() : nullptr;
}

} // namespace Vell::FontEngine::Internal
