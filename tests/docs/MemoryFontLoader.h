#pragma once

#include <FontLoaders/FontLoaders.h>

#include <map>
#include <memory>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

namespace Vell::Docs {

//! [loader]
/// Serves font files that a program carries in its memory. Nothing changes after the factory has it, so any
/// number of threads may ask.
class MemoryFontLoader : public FontLoaders::FontLoader {
public:
    explicit MemoryFontLoader(std::string defaultFamily)
        : _defaultFamily(std::move(defaultFamily)) {}

    void add(const std::string& family, bool bold, bool italic, std::vector<unsigned char> file) {
        const auto bytes = std::make_shared<const std::vector<unsigned char>>(std::move(file));
        if (const auto reason = FontLoaders::findReasonNotToServe(bytes)) {
            throw FontLoaders::FontLoaderException("cannot serve a font as " + family + ": " + *reason);
        }
        _files[{family, bold, italic}] = bytes;
    }
    void serveRange(unsigned int codePoint, const std::string& family) {
        _families[FontLoaders::UnicodeRangeMap::find(codePoint)] = family;
    }

    FontLoaders::FontBytes loadFont(const NNPtr<const Gfx::FontFaceInfo>& faceInfo) const override {
        return find(faceInfo->getName(), faceInfo->isBold(), faceInfo->isItalic());
    }
    FontLoaders::FontBytes loadDefaultFont(bool bold, bool italic) const override {
        return find(_defaultFamily, bold, italic);
    }
    std::string getFamilyNameForRange(unsigned int rangeId) const override {
        const auto found = _families.find(rangeId);
        return found != _families.end() ? found->second : std::string();
    }

private:
    FontLoaders::FontBytes find(const std::string& family, bool bold, bool italic) const {
        const auto found = _files.find({family, bold, italic});
        return found != _files.end() ? found->second : nullptr;
    }

    std::string _defaultFamily;
    std::map<std::tuple<std::string, bool, bool>, FontLoaders::FontBytes> _files;
    std::map<unsigned int, std::string> _families;
};
//! [loader]

} // namespace Vell::Docs
