#pragma once

/// The umbrella header: the factory with its faces and fonts, descriptions, the functions that describe,
/// measure and draw in one call, glyph keys and runs, the two text painters, the glyphs for a layout of
/// the client's own, and colour glyphs.

#include <FontEngine/Color/FE_ColorGlyphInfo.h>
#include <FontEngine/Color/FE_ColorGlyphPainter.h>
#include <FontEngine/Color/FE_ColorGlyphs.h>
#include <FontEngine/Color/FE_ColorPaintTarget.h>
#include <FontEngine/Color/FE_ColorVectorPainter.h>
#include <FontEngine/Color/FE_DrawColorGlyphs.h>
#include <FontEngine/FE_BitmapGlyphPainter.h>
#include <FontEngine/FE_CacheFigures.h>
#include <FontEngine/FE_Font.h>
#include <FontEngine/FE_FontDescriptions.h>
#include <FontEngine/FE_FontFace.h>
#include <FontEngine/FE_FontFactory.h>
#include <FontEngine/FE_GlyphInfo.h>
#include <FontEngine/Renderer/FE_BitmapGlyphRun.h>
#include <FontEngine/Renderer/FE_DrawText.h>
#include <FontEngine/Renderer/FE_GlyphOutlines.h>
#include <FontEngine/Renderer/FE_OutlineGlyphRun.h>
#include <FontEngine/Renderer/FE_PlacedGlyphRun.h>
#include <FontEngine/Renderer/FE_RasterSpace.h>
#include <FontEngine/Renderer/FE_RasterTextPainter.h>
#include <FontEngine/Renderer/FE_VectorTextPainter.h>
#include <FontLoaders/FontLoaders.h>
#include <Gfx/Gfx.h>
#include <Utils/Utils.h>
