#pragma once

#include <FontLoaders/Public/CoverageFallback.h>
#include <FontLoaders/Public/FontLoader.h>
#include <Utils/Public/Export.h>

#include <memory>

namespace Vell::FontLoaders {

/// Makes a fallback over the fonts of a loader from createPlatformDefaultFontLoader. Null for all other
/// loaders.
///
///     const auto fallback = createPlatformCoverageFallback(factory->getFontLoader());
///     const auto found = fallback->findFace({cluster, face, "ja"});
///
/// It sees the same list of fonts as the loader and shares its ownership, so it may outlive the loader. If
/// no fonts are installed, there are no answers; the built-in font is not one of them.
///
/// Coverage. A face covers a cluster if it has all of its code points, in the spelling of the text or in a
/// canonically equivalent one, composed or decomposed. Code points that are ignorable by default, such as
/// joiners, variation selectors and tags, stay with their base and may be missing, but for the few that
/// HarfBuzz shows, such as Hangul fillers. So every face covers a cluster of nothing but the others. If no
/// face covers the whole cluster, the answer is the face that covers its first code point that is not
/// ignorable, so that its marks alone are missing. What a face's GSUB table makes of the characters is not
/// considered.
///
/// Order. The text's own family comes first, or the loader's default family if the own one is not installed;
/// an empty name means the default family, too. The families of the request follow, and names mean what they
/// mean to the loader. All others follow in fontconfig's order for the own family, the language and the
/// style. The language decides which Han characters look Japanese, Korean or Chinese. A Chinese tag with the
/// script Hans or Hant, and without a region that says more, means mainland China or Taiwan. fontconfig knows
/// the others by language, and by a few regions. If the tag is empty or "und", fontconfig takes the language
/// of the process. Fonts of symbols without Unicode codes serve only a text that names them.
///
/// Emoji. A cluster with emoji presentation (findPresentation) goes to the first colour font that covers it,
/// else to an outline font for emoji, even if the text's own family has it. fontconfig orders these as it
/// orders the family "emoji". Before U+FE0E and for all other characters, a colour font serves only if no
/// other does, or if it is the text's own family or one of the request and the text does not ask for U+FE0E.
///
/// Styles. In each family, the face that a font factory takes for the text's style comes first, then the
/// family's other styles. An answer is a face that the loader can serve: it has been read, FreeType opens
/// it, and it has a usable charmap. Others count as missing.
///
/// Errors: FontLoaderException if the language is not a well-formed tag; its text contains the tag.
/// std::bad_alloc.
///
/// Threads: any thread may ask. New answers wait for the requests of all platform loaders.
///
/// Cost: answers are remembered, also that there is none, up to about a megabyte of them, until a face turns
/// out to have no usable charmap. A remembered answer costs a lookup under a lock. A new one walks through
/// the families. The first one for a family, language and style also sorts all fonts, and the first one for a
/// face reads its file. Clusters of more than 64 code points are searched every time.
VELL_API std::shared_ptr<const CoverageFallback> createPlatformCoverageFallback(const FontLoader& loader);

} // namespace Vell::FontLoaders
