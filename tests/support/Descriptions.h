#pragma once

#include <Gfx/Public/FontInfo.h>

#include <string>

namespace Vell::Testing {

using FaceInfoPtr = NNPtr<const Gfx::FontFaceInfo>;
using FontInfoPtr = NNPtr<const Gfx::FontInfo>;
using ExtFontInfoPtr = NNPtr<const Gfx::ExtFontInfo>;

FaceInfoPtr makeFaceInfo(const std::string& name = "Test Sans", bool bold = false, bool italic = false);

FontInfoPtr makeFontInfo(const FaceInfoPtr& faceInfo, float size = 10.0F,
                         Gfx::TextPositionType type = Gfx::TextPositionType::Normal);
FontInfoPtr makeFontInfo(const std::string& name = "Test Sans", float size = 10.0F);

ExtFontInfoPtr makeExtFontInfo(const FontInfoPtr& fontInfo, float letterSpacing = 0.0F);
ExtFontInfoPtr makeExtFontInfo(float letterSpacing = 0.0F);

} // namespace Vell::Testing
