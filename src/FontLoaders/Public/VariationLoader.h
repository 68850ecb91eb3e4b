#pragma once

#include <FontLoaders/Public/FontLoader.h>
#include <Utils/Public/Export.h>
#include <Utils/Public/Ptr/CheckedPtr.h>

namespace Vell::FontLoaders {

/// Makes a loader that serves instances of the variable fonts of another loader, by the name of a family.
///
///     const auto loader = createVariationLoader(createPlatformDefaultFontLoader("Inter"));
///     const auto factory = FontFactory::create(loader, "Inter");
///     const auto semibold = makeNNPtr<const FontFaceInfo>("Inter:wght=650,slnt=-4", false, false);
///
/// Names. The settings follow the last colon of the name, as parseVariations reads them. A name counts as
/// having settings only if an equals sign follows that colon, and only if `loader` has no family of the whole
/// name in any style: a family that is called "A:b=1" keeps its name. All other names, the default fonts and
/// the ranges are those of `loader`. So two settings are two families for everyone: font factories, their
/// caches, and the equality of descriptions.
///
/// Styles. A bold or italic request is served by the variable face that `loader` has for this style, or else
/// by the axes of the variable face that lacks the style: wght=700 for bold; for italic ital=1, or slnt as
/// far as it goes to -14. A setting in the name decides instead: "Inter:wght=650" is the same weight for a
/// bold request. Null if there is neither such a face nor such an axis, so that a font factory synthesises
/// the style from the plain instance.
///
/// Families. If `loader` is that of the installed fonts, and its face of a style lacks an axis of the
/// settings that another installed face of the family and of the style has, that one serves: "Inter:slnt=-5"
/// finds the file with a slant among those of Inter.
///
/// Bytes. They are those of makeFontInstance. The loader keeps the 64 instances that were last requested, of
/// at most 64 MiB together; while it keeps one, the same request returns the same vector. Each is made once.
///
/// What is said about the loader of the installed fonts (createPlatformCoverageFallback, findFontFile) also
/// holds for a variation loader over it. The file of an instance is that of the variable font. Fallback fonts
/// take no settings.
///
/// Errors: those of `loader`, parseVariations, and makeFontInstance; so a family without a variable face
/// throws FontLoaderException if the name has settings for it. A family that `loader` lacks is null.
///
/// Threads: those that `loader` allows. Requests for instances that are not kept wait for each other, and
/// `loader` is called meanwhile: it must not request one itself.
VELL_API NNPtr<FontLoader> createVariationLoader(NNPtr<const FontLoader> loader);

} // namespace Vell::FontLoaders
