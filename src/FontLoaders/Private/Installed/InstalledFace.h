#pragma once

#include <fontconfig/fontconfig.h>

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace Vell::FontLoaders::Internal {

/// What fontconfig knows about one face in a font file. Weight, slant and width are fontconfig's numbers.
struct InstalledFace {
    std::vector<std::string> families; ///< its names in all languages, fontconfig's preferred one first
    std::string file;
    unsigned int index; ///< its position in a collection, from 0
    double weight;
    double width;
    int slant;
    bool isScalable;             ///< whether it has outlines and not only bitmaps for a few sizes
    bool isColored;              ///< whether its glyphs bring their own colours
    bool isSymbolic;             ///< whether its codes are not those of Unicode
    bool supportsEmoji;          ///< whether it has all characters that fontconfig expects of an emoji font
    bool isVariable;             ///< whether its file has axes; tryReadFace cannot tell
    const FcCharSet* characters; ///< valid as long as the pattern that it was read from; may be null

    bool isBold() const { return weight >= FC_WEIGHT_DEMIBOLD; }
    bool isItalic() const { return slant > FC_SLANT_ROMAN; }
};

/// The face that a pattern describes. fontconfig lists a variable font once for its default instance, once
/// for each of its named instances, and once for the whole range of its axes. Empty for all but the default
/// instance, because that is what one gets by opening the file. Also empty for a pattern without a file or a
/// family name.
std::optional<InstalledFace> tryReadFace(const FcPattern* pattern);

/// The default instance of a font, or one of the named instances of a variable font.
struct InstalledInstance {
    InstalledFace face;
    unsigned int instance;           ///< 0 for the default one
    std::vector<std::string> styles; ///< its names in all languages
};

/// The instance that a pattern describes. Empty for a pattern of the whole range of the axes.
std::optional<InstalledInstance> tryReadInstance(const FcPattern* pattern);

/// Whether the pattern is that of the whole range of a variable font's axes.
bool describesAxes(const FcPattern* pattern);

/// The file of a pattern, which may be empty, and the position of its face.
std::pair<std::string, unsigned int> getPlace(const FcPattern* pattern);

/// Whether the pattern describes this face or, if the font is variable, any of its instances.
bool describesFace(const FcPattern* pattern, const InstalledFace& face);

} // namespace Vell::FontLoaders::Internal
