#pragma once

#include <FontLoaders/Private/Installed/FaceCatalog.h>
#include <FontLoaders/Private/Installed/Fontconfig.h>
#include <FontLoaders/Private/Installed/UnicodeBlocks.h>

#include <string>
#include <vector>

namespace Vell::FontLoaders::Internal {

/// Finds the family that covers most of a Unicode block.
class RangeFamilies {
public:
    /// Between families that cover a block equally well, fontconfig's order of preference for the name
    /// `preferred` decides. Uses the faces that are in the catalog now. `config` must outlive this object.
    RangeFamilies(FcConfig* config, const FaceCatalog& catalog, const std::string& preferred);

    /// The family for the block with this identifier. Empty if no family covers any of the block.
    std::string find(unsigned int rangeId) const;

private:
    struct Family {
        std::string name;
        const FcCharSet* characters; ///< of the face that draws plain text in this family
    };

    std::string findBest(const UnicodeBlock& block) const;

    std::vector<Family> _families; // those with outlines, most preferred first
};

} // namespace Vell::FontLoaders::Internal
