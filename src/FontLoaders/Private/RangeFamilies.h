#pragma once

#include <FontLoaders/Private/FaceCatalog.h>
#include <FontLoaders/Private/FontconfigHandles.h>
#include <FontLoaders/Private/UnicodeBlocks.h>

#include <string>
#include <vector>

namespace Vell::FontLoaders::Internal {

/// Finds the family that covers most of a Unicode block.
class RangeFamilies {
public:
    /// `preferred` decides between families that cover a block equally well: fontconfig's order of preference
    /// for this name. Knows the faces that are in the catalog now; `config` must outlive this.
    RangeFamilies(FcConfig* config, const FaceCatalog& catalog, const std::string& preferred);

    /// The family for a block's identifier; empty when no family has any of the block.
    std::string find(unsigned int rangeId) const;

private:
    struct Family {
        std::string name;
        const FcCharSet* characters; ///< of the face that plain text in this family is drawn with
    };

    std::string findBest(const UnicodeBlock& block) const;

    std::vector<Family> _families; // with outlines, most preferred first
};

} // namespace Vell::FontLoaders::Internal
