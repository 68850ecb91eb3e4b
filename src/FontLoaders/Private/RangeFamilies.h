#pragma once

#include <FontLoaders/Private/FaceCatalog.h>
#include <FontLoaders/Private/FontconfigHandles.h>
#include <FontLoaders/Private/UnicodeBlocks.h>

#include <string>
#include <unordered_map>
#include <vector>

namespace Vell::FontLoaders::Internal {

/// Finds the family that covers most of a Unicode block, and remembers it, found or not.
class RangeFamilies {
public:
    /// `preferred` decides between families that cover a block equally well: fontconfig's order of preference
    /// for this name. `config` and `catalog` must outlive this.
    RangeFamilies(FcConfig* config, const FaceCatalog& catalog, const std::string& preferred);

    /// The family for a block's identifier; empty when no family has any of the block.
    const std::string& get(unsigned int rangeId);

private:
    struct Family {
        std::string name;
        const FcCharSet* characters; ///< of the face that plain text in this family is drawn with
    };

    std::string findBest(const UnicodeBlock& block) const;

    std::vector<Family> _families; // with outlines, most preferred first
    std::unordered_map<unsigned int, std::string> _answers;
};

} // namespace Vell::FontLoaders::Internal
