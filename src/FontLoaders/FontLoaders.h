#pragma once

/// Where fonts come from: the loader interface, the loader of the installed fonts, fallback by coverage and
/// language, variable fonts, the functions that open font files with FreeType, and the bounds that keep a
/// hostile font from taking all memory or time.

#include <FontLoaders/Public/ClusterPresentation.h>
#include <FontLoaders/Public/CompositeGlyphs.h>
#include <FontLoaders/Public/CoverageFallback.h>
#include <FontLoaders/Public/Exceptions.h>
#include <FontLoaders/Public/FontLoader.h>
#include <FontLoaders/Public/FontVariations.h>
#include <FontLoaders/Public/FreeType.h>
#include <FontLoaders/Public/FreeTypeMemory.h>
#include <FontLoaders/Public/PlatformCoverageFallback.h>
#include <FontLoaders/Public/PlatformFontLoader.h>
#include <FontLoaders/Public/SymbolicFonts.h>
#include <FontLoaders/Public/UnicodeRangeMap.h>
#include <FontLoaders/Public/VariationLoader.h>
#include <Gfx/Gfx.h>
