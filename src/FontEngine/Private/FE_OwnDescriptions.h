#pragma once

#include <FontEngine/FE_FontDescriptions.h>
#include <Gfx/Public/FontInfo.h>
#include <Utils/Public/Ptr/CheckedPtr.h>

namespace Vell::FontEngine::Internal {

/// Returns the description as this library's own class, or null if it has another class.
inline const ExtFontInfo* findOwn(const Gfx::ExtFontInfo& extFontInfo) {
    const bool isOwn = ExtFontInfo::isExactly(extFontInfo);
    return isOwn ? static_cast<const ExtFontInfo*>(&extFontInfo) : nullptr;
}

/// Returns the font description in `own` as this library's own class, or null if it has another class.
/// Reading it calls no client code, so one call is enough where a client's description is called for every
/// character.
inline const FontInfo* findOwnFontInfo(const ExtFontInfo* own) {
    const bool isOwn = own != nullptr && FontInfo::isExactly(own->viewFontInfo());
    return isOwn ? static_cast<const FontInfo*>(&own->viewFontInfo()) : nullptr;
}

/// Returns the face description that such a font description stores, or null. The face description may have
/// any class.
inline const NNPtr<const Gfx::FontFaceInfo>* findStoredFaceInfo(const ExtFontInfo* own) {
    const FontInfo* const fontInfo = findOwnFontInfo(own);
    return fontInfo != nullptr ? &fontInfo->viewFontFaceInfo() : nullptr;
}

} // namespace Vell::FontEngine::Internal
