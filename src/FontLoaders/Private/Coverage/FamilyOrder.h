#pragma once

#include <FontLoaders/Private/Coverage/StyledFamily.h>
#include <FontLoaders/Private/Installed/Fontconfig.h>
#include <Utils/Public/MRUCache.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace Vell::FontLoaders::Internal {

/// All families, most preferred first.
using FamilyOrder = std::shared_ptr<const std::vector<StyledFamily>>;

/// The families in fontconfig's orders of preference, as long as the catalog does not change. Remembers the
/// orders that were used last, because sorting all fonts takes milliseconds.
class FamilyOrders {
public:
    /// The order for a request, with the faces that are in the catalog now. Symbol fonts are left out,
    /// because their codes do not mean characters.
    FamilyOrder get(FcConfig* config, const FaceCatalog& catalog, const SortRequest& request);

private:
    static constexpr std::uint64_t maxOrders = 16; // styles times languages of a text, and those of emoji

    MRUCache<std::string, FamilyOrder, std::hash<std::string>, std::equal_to<>> _orders{maxOrders};
};

} // namespace Vell::FontLoaders::Internal
