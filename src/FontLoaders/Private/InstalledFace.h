#pragma once

#include <fontconfig/fontconfig.h>

#include <optional>
#include <string>
#include <vector>

namespace Vell::FontLoaders::Internal {

/// What fontconfig knows of one face in a font file. Weight, slant and width are fontconfig's numbers.
struct InstalledFace {
    std::vector<std::string> families; ///< its names in all languages, the one that fontconfig prefers first
    std::string file;
    unsigned int index; ///< its place in a collection, from 0
    double weight;
    double width;
    int slant;
    bool isScalable;             ///< whether it has outlines: strikes of bitmaps serve few sizes
    const FcCharSet* characters; ///< lives as long as the pattern that it was read from; may be null

    bool isBold() const { return weight >= FC_WEIGHT_DEMIBOLD; }
    bool isItalic() const { return slant > FC_SLANT_ROMAN; }
};

/// Empty when the pattern does not stand for what a reader of the whole file gets: fontconfig lists a
/// variable font once as the font that is there by default, once more for each of its named instances, and
/// once more for all that it can become.
std::optional<InstalledFace> tryReadFace(const FcPattern* pattern);

/// Whether the pattern stands for this face or for what it can become, being variable.
bool isOfFace(const FcPattern* pattern, const InstalledFace& face);

} // namespace Vell::FontLoaders::Internal
