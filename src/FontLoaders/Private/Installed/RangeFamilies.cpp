#include <FontLoaders/Private/Installed/RangeFamilies.h>

#include <FontLoaders/Private/Installed/Fontconfig.h>

#include <set>

namespace Vell::FontLoaders::Internal {

namespace {

FontconfigPtr<FcCharSet> makeCharSet(const UnicodeBlock& block) {
    FontconfigPtr<FcCharSet> characters(FcCharSetCreate());
    for (char32_t code = block.first; code <= block.last; ++code) {
        FcCharSetAddChar(characters.get(), code);
    }
    return characters;
}

} // namespace

RangeFamilies::RangeFamilies(FcConfig* config, const FaceCatalog& catalog, const std::string& preferred) {
    const FontconfigPtr<FcFontSet> fonts = sortFonts(config, catalog.getPatterns(), preferred);
    std::set<const Faces*> known;
    for (int i = 0; fonts && i < fonts->nfont; ++i) {
        const auto listed = tryReadFace(fonts->fonts[i]);
        const Faces* faces = listed ? catalog.find(listed->families.front()) : nullptr;
        if (faces == nullptr || !known.insert(faces).second) {
            continue;
        }
        const InstalledFace& plain = *selectPlainFace(*faces);
        if (plain.isScalable && plain.characters != nullptr) {
            _families.push_back({listed->families.front(), plain.characters});
        }
    }
}

std::string RangeFamilies::find(unsigned int rangeId) const {
    const UnicodeBlock* block = findUnicodeBlock(rangeId);
    return block == nullptr ? std::string() : findBest(*block);
}

std::string RangeFamilies::findBest(const UnicodeBlock& block) const {
    const FontconfigPtr<FcCharSet> wanted = makeCharSet(block);
    const Family* best = nullptr;
    FcChar32 bestCount = 0;
    for (const Family& family : _families) {
        const FcChar32 count = FcCharSetIntersectCount(family.characters, wanted.get());
        if (count > bestCount) {
            best = &family;
            bestCount = count;
        }
    }
    return best == nullptr ? std::string() : best->name;
}

} // namespace Vell::FontLoaders::Internal
