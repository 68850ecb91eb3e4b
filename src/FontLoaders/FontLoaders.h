#pragma once

/// Where fonts come from: the loader interface, the loader of the installed fonts, and the functions that
/// open font bytes with FreeType and tell whether they can be served.

#include <FontLoaders/Public/CompositeGlyphs.h>
#include <FontLoaders/Public/Exceptions.h>
#include <FontLoaders/Public/FontBytes.h>
#include <FontLoaders/Public/FontLoader.h>
#include <FontLoaders/Public/FreeType.h>
#include <FontLoaders/Public/FreeTypeMemory.h>
#include <FontLoaders/Public/PlatformFontLoader.h>
#include <FontLoaders/Public/ServableFonts.h>
#include <FontLoaders/Public/SymbolicFonts.h>
#include <FontLoaders/Public/UnicodeRangeMap.h>
#include <Gfx/Gfx.h>
