#pragma once

#include "LoaderFonts.h"

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace Vell::Testing {

using CodeRanges = std::vector<std::pair<char32_t, char32_t>>;

/// Makes a rule that gives the fonts of a family a property when fontconfig reads them.
inline std::string makeScanRule(const std::string& family, const std::string& property,
                                const std::string& value) {
    return "<match target=\"scan\"><test name=\"family\"><string>" + family +
           "</string></test><edit name=\"" + property + "\" mode=\"assign\">" + value + "</edit></match>";
}

inline std::string makeLanguageRule(const std::string& family, const std::string& language) {
    return makeScanRule(family, "lang", "<langset><string>" + language + "</string></langset>");
}

inline std::string makeColorRule(const std::string& family) {
    return makeScanRule(family, "color", "<bool>true</bool>");
}

/// Makes a rule that puts families after another, in this order.
inline std::string makePreferRule(const std::string& family, const std::vector<std::string>& next) {
    std::string rule = "<alias><family>" + family + "</family><prefer>";
    for (const std::string& name : next) {
        rule += "<family>" + name + "</family>";
    }
    return rule + "</prefer></alias>";
}

inline std::string describeFace(const Gfx::FontFaceInfo& face) {
    return face.getName() + (face.isBold() ? " bold" : "") + (face.isItalic() ? " italic" : "");
}

/// A text that needs faces.
struct CoverageText {
    std::string family = "Own";
    std::string language = "en";
    bool bold = false;
    bool italic = false;
    std::vector<std::string> families = {};
};

inline FontLoaders::CoverageRequest makeRequest(std::u32string_view cluster, const CoverageText& text) {
    return {cluster, makeClientFaceInfo(text.family, text.bold, text.italic), text.language, text.families};
}

/// The installed fonts, as a loader and its fallback see them.
class CoverageFonts {
public:
    explicit CoverageFonts(const std::string& defaultFamily = "Default")
        : loader(FontLoaders::createPlatformDefaultFontLoader(defaultFamily))
        , fallback(FontLoaders::createPlatformCoverageFallback(*loader)) {
        load(loader, "Unknown"); // reads the list of fonts
    }

    /// Returns the family and style of the answer, or "none". Expects that the loader serves every answer.
    std::string find(std::u32string_view cluster, const CoverageText& text = {}) const {
        const auto found = fallback->findFace(makeRequest(cluster, text));
        if (!found) {
            return "none";
        }
        EXPECT_NE(loader->loadFont(found->face), nullptr) << describeFace(*found->face);
        return describeFace(*found->face);
    }

    /// Returns what a factory would be asked for.
    std::string findDrawn(std::u32string_view cluster, const CoverageText& text) const {
        const auto found = fallback->findFace(makeRequest(cluster, text));
        return found ? describeFace(*found->drawnFace) : "none";
    }

    NNPtr<FontLoaders::FontLoader> loader;
    NNPtr<const FontLoaders::CoverageFallback> fallback;
};

inline void install(const FontSandbox& sandbox, const std::string& family, const CodeRanges& characters,
                    unsigned int weight = 400, bool italic = false) {
    const std::string file = family + "-" + std::to_string(weight) + (italic ? "-italic" : "") + ".ttf";
    sandbox.write(file, makeBlankFont(family, weight, italic, characters).build());
}

} // namespace Vell::Testing
