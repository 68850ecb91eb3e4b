#include <FontLoaders/Private/Coverage/FamilyOrder.h>

#include <set>
#include <utility>

namespace Vell::FontLoaders::Internal {

namespace {

FamilyOrder makeOrder(FcConfig* config, const FaceCatalog& catalog, const SortRequest& request) {
    const FontconfigPtr<FcFontSet> fonts = sortFonts(config, catalog.getPatterns(), request);
    std::vector<StyledFamily> families;
    std::set<const Faces*> known;
    for (int i = 0; fonts && i < fonts->nfont; ++i) {
        const auto listed = tryReadFace(fonts->fonts[i]);
        const Faces* faces = listed && !listed->isSymbolic ? catalog.find(listed->families.front()) : nullptr;
        if (faces != nullptr && known.insert(faces).second) {
            families.push_back(
                makeStyledFamily(listed->families.front(), *faces, {request.bold, request.italic}));
        }
    }
    return std::make_shared<const std::vector<StyledFamily>>(std::move(families));
}

/// A language has no zero byte, so that no two requests have the same key.
std::string makeKey(const SortRequest& request) {
    return request.language + '\0' + (request.bold ? 'b' : ' ') + (request.italic ? 'i' : ' ') +
           request.family;
}

} // namespace

FamilyOrder FamilyOrders::get(FcConfig* config, const FaceCatalog& catalog, const SortRequest& request) {
    const auto make = [&] { return MRUCacheNode<FamilyOrder>(makeOrder(config, catalog, request), 0); };
    return _orders.getOrPut(makeKey(request), make).getValue();
}

} // namespace Vell::FontLoaders::Internal
